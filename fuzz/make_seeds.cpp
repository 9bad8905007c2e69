// make-seeds MACHINES OUT: writes what the fuzzers begin with: the tests' machines in every layout, and every type
// alone.
#include "support/machine_text.h"

#include <cstdio>
#include <exception>

namespace
{

using tests::Bytes;
using tests::TableBuilder;

/// Writes a seed for each target, once behind each of the first bytes that matter.
void write(const std::filesystem::path& folder, const std::string& name, const Bytes& content)
{
    const std::pair<const char*, std::string_view> kTargets[] = {{"table", {"\0\1\2\3", 4}},
                                                                 {"discovery", {"\0\4\x8\x40\x44\x80", 6}}};
    for (const auto& [target, choices] : kTargets)
        for (const char choice : choices) {
            Bytes seed{static_cast<unsigned char>(choice)};
            seed.insert(seed.end(), content.begin(), content.end());
            tests::writeBytes(folder / target / (name + "-" + std::to_string(choice)), seed);
        }
}

/// One structure, with the two vendors whose own types count. Every byte is 1, so that every field is there and every
/// handle is a child's.
TableBuilder alone(unsigned char type)
{
    const unsigned char length = type == 131 ? 0x0B : 0x5C;
    TableBuilder table;
    table.add(0, 0xFE00, 0x18).text(0x04, "LENOVO");
    table.add(1, 0xFE01, 0x1B).text(0x04, "Dell");
    table.add(type, 0x0100, length)
        .bytes(0x04, Bytes(length - 4u, 1))
        .string("Lenovo System Metrics")
        .string("  ")
        .string("B\xC3\xBC\xFFro");
    return table.end();
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: make-seeds MACHINES OUT\n");
        return 1;
    }
    try {
        const std::filesystem::path out = argv[2];
        for (const char* target : {"table", "discovery"})
            std::filesystem::create_directories(out / target);
        for (const auto& file : std::filesystem::directory_iterator(argv[1]))
            if (file.path().extension() == ".table")
                for (const auto& [layout, content] : tests::readMachine(file.path()).table.layouts())
                    write(out, file.path().stem().string() + "-" + layout, content);
        for (unsigned type = 0; type < 256; ++type)
            if (type < 64 || type == 131 || type == 208)
                write(out, "type-" + std::to_string(type), alone(static_cast<unsigned char>(type)).dump64(3, 2, 0));
    } catch (const std::exception& wrong) {
        std::fprintf(stderr, "%s\n", wrong.what());
        return 1;
    }
}
