// Table images and entry points: every layout is read safely, and a saved table loads as it was.
#include "embedded_host/firmware.h"
#include "fuzzing.h"
#include "support/memory_file.h"
#include "support/output_rules.h"
#include "support/recorded_session.h"
#include "table/firmware.h"
#include "table/table_error.h"
#include "table/table_file.h"

#include <cstring>

namespace
{

using namespace embedded_host::table;

/// A folder in the manner of /sys/firmware/dmi/tables with this dump's entry point and table, which are in memory.
const std::filesystem::path& kernelFolder(View dump)
{
    static const tests::TemporaryFolder folder;
    static tests::MemoryFile entryPoint;
    static tests::MemoryFile table;
    if (std::filesystem::is_empty(folder.path())) {
        std::filesystem::create_symlink(entryPoint.path(), folder / kEntryPointFile);
        std::filesystem::create_symlink(table.path(), folder / kTableFile);
    }
    const auto middle = std::min(dump.size(), kDumpTableOffset);
    entryPoint.hold(dump.first(middle));
    table.hold(dump.subspan(middle));
    return folder.path();
}

RawTable scanned(View memory, Faults& faults)
{
    auto found = scanForEntryPoint(memory, "memory", 0, faults);
    if (!found)
        throw TableError::malformed("no entry point");
    const View table = memory.subspan(std::min<std::size_t>(found->tableAddress, memory.size()));
    return joined(std::move(*found), Bytes(table.begin(), table.end()), "memory", faults);
}

RawTable read(unsigned source, View bytes, Faults& faults)
{
    static tests::MemoryFile file;
    auto& places = embedded_host::firmwarePlaces();
    switch (source % 5) {
    case 0:
        file.hold(bytes);
        return readTableFile(file.path(), faults);
    case 1:
        return readTableFile(kernelFolder(bytes), faults);
    case 2:
        places.tables = kernelFolder(bytes);
        return findFirmwareTable(faults)->read(faults);
    case 3:
        return scanned(bytes, faults);
    default: // the EFI system table; the memory that it leads to has no table
        file.hold(bytes);
        places = {"/nonexistent", file.path(), "/dev/zero"};
        return findFirmwareTable(faults)->read(faults);
    }
}

/// The same structures, with all that decoders may read behind each of them.
void expectSame(const Image& a, const Image& b)
{
    fuzz::expect(a.version().text() == b.version().text(), "another version");
    fuzz::expect(a.structures() == b.structures(), "another number of structures");
    for (unsigned type = 0; type < 256; ++type)
        for (std::size_t i = 0; const auto* one = a.find(static_cast<unsigned char>(type), i); ++i) {
            const auto* other = b.find(static_cast<unsigned char>(type), i);
            fuzz::expect(other != nullptr && std::memcmp(one, other, Image::kZeroTail) == 0, "another structure");
        }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    fuzz::Input input(data, size);
    const unsigned source = fuzz::takeChoice(input);
    Faults faults;
    std::optional<Image> image;
    try {
        image.emplace(read(source, input, faults), faults);
    } catch (const TableError&) {
        return 0;
    }
    fuzz::expect(faults.all().size() <= size / 0x10 + 8, "too many faults");
    for (const auto& fault : faults.all())
        fuzz::expectNone(tests::faultInText(faults.sentence(fault)));
    expectSame(*image, Image(read(0, image->dump(), faults), faults));
    return 0;
}
