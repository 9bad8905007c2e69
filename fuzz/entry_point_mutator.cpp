// Checksums would turn away nearly all inputs whose entry point the fuzzer changed: most are made right again.
#include "support/table_builder.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed)
{
    size = LLVMFuzzerMutate(data, size, maxSize);
    if (seed % 4 == 0 || size <= 0x10)
        return size;
    const auto bytes = std::span(data, size).subspan(1); // behind the byte that chooses
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (text.starts_with("_SM3_")) {
        tests::mend(bytes, 0, bytes[0x06], 0x05);
    } else if (text.starts_with("_SM_")) {
        tests::mend(bytes, 0x10, 0x0F, 0x15);
        tests::mend(bytes, 0, bytes[0x05], 0x04);
    } else if (text.starts_with("_DMI_")) {
        tests::mend(bytes, 0, 0x0F, 0x05);
    }
    return size;
}
