// The reader of the machine text: each statement is a call of the table builder.
#include "machine_text.h"

#include <fstream>
#include <functional>
#include <iomanip>
#include <limits>
#include <sstream>
#include <stdexcept>

namespace tests
{
namespace
{

using Layout = std::function<Bytes(const TableBuilder&)>;

[[noreturn]] void fail(const std::string& what) { throw std::runtime_error(what); }

template <std::unsigned_integral T>
T takeNumber(std::istream& operands)
{
    std::uint64_t value = 0;
    if (!(operands >> std::setbase(0) >> value) || value > std::numeric_limits<T>::max())
        fail("a number is missing, is none or is too large for its place");
    return static_cast<T>(value);
}

std::string takeText(std::istream& operands)
{
    std::string text;
    if (!(operands >> std::quoted(text)))
        fail("a text is missing or has no closing quote");
    return text;
}

Bytes takeBytes(std::istream& operands)
{
    Bytes bytes;
    for (unsigned value = 0; operands >> std::hex >> value;)
        bytes.push_back(static_cast<unsigned char>(value));
    if (!operands.eof())
        fail("not two hexadecimal digits");
    operands.clear();
    return bytes;
}

Layout readEntryPoint(std::istream& operands)
{
    std::string kind;
    operands >> kind;
    const auto major = takeNumber<std::uint8_t>(operands);
    const auto minor = takeNumber<std::uint8_t>(operands.ignore());
    if (kind == "legacy")
        return [=](const TableBuilder& table) { return table.dumpLegacy(major, minor); };
    if (kind == "32")
        return [=](const TableBuilder& table) { return table.dump32(major, minor); };
    if (kind != "64")
        fail("not an entry point: " + kind);
    const auto revision = takeNumber<std::uint8_t>(operands.ignore());
    return [=](const TableBuilder& table) { return table.dump64(major, minor, revision); };
}

StructureBuilder& readStructure(TableBuilder& table, std::istream& operands)
{
    const auto type = takeNumber<std::uint8_t>(operands);
    const auto handle = takeNumber<std::uint16_t>(operands);
    return table.add(type, handle, takeNumber<std::uint8_t>(operands));
}

void readField(StructureBuilder& structure, const std::string& statement, std::istream& operands)
{
    if (statement == "string") {
        structure.string(takeText(operands));
        return;
    }
    const auto offset = takeNumber<std::uint8_t>(operands);
    if (statement == "byte")
        structure.put(byte(offset), takeNumber<std::uint8_t>(operands));
    else if (statement == "word")
        structure.put(word(offset), takeNumber<std::uint16_t>(operands));
    else if (statement == "dword")
        structure.put(dword(offset), takeNumber<std::uint32_t>(operands));
    else if (statement == "qword")
        structure.put(qword(offset), takeNumber<std::uint64_t>(operands));
    else if (statement == "bytes")
        structure.bytes(offset, takeBytes(operands));
    else if (statement == "text")
        structure.text(offset, takeText(operands));
    else
        fail("not a statement of a structure: " + statement);
}

Machine read(std::istream& lines, unsigned& lineNumber)
{
    TableBuilder table;
    StructureBuilder* structure = nullptr; // the one that waits for its end
    Layout layout;
    for (std::string line; std::getline(lines, line); ++lineNumber) {
        std::istringstream words(line.substr(0, line.find('#')));
        std::string statement;
        if (!(words >> statement))
            continue;
        if (structure && statement == "end")
            structure = nullptr;
        else if (structure)
            readField(*structure, statement, words);
        else if (statement == "structure")
            structure = &readStructure(table, words);
        else if (statement == "entry-point")
            layout = readEntryPoint(words);
        else
            fail("not a statement between structures: " + statement);
        if (std::string more; words >> more)
            fail(statement.append(" has a word too many: ").append(more));
    }
    if (structure || !layout)
        fail("the last structure has no end, or there is no entry point");
    return {table, layout(table)};
}

} // namespace

Machine readMachine(const std::filesystem::path& path)
{
    unsigned lineNumber = 1;
    try {
        std::ifstream file(path);
        if (!file)
            fail("the file cannot be opened");
        return read(file, lineNumber);
    } catch (const std::exception& wrong) {
        throw std::runtime_error(path.string() + ":" + std::to_string(lineNumber) + ": " + wrong.what());
    }
}

} // namespace tests
