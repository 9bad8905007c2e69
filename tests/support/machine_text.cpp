// The reader of the machine text: each line becomes words, each statement a call of the table builder.
#include "machine_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <functional>
#include <stdexcept>

namespace tests
{
namespace
{

using Words = std::vector<std::string>;
using Layout = std::function<Bytes(const TableBuilder&)>;

[[noreturn]] void fail(const std::string& what) { throw std::runtime_error(what); }

template <std::unsigned_integral T>
T parse(std::string_view digits, int base)
{
    T value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, base);
    if (error == std::errc::result_out_of_range)
        fail("too large for its place: " + std::string(digits));
    if (error != std::errc() || stop != end)
        fail("not a number: " + std::string(digits));
    return value;
}

template <std::unsigned_integral T>
T number(std::string_view token)
{
    return token.starts_with("0x") ? parse<T>(token.substr(2), 16) : parse<T>(token, 10);
}

unsigned char hexPair(std::string_view token)
{
    if (token.size() != 2)
        fail("not two hexadecimal digits: " + std::string(token));
    return parse<unsigned char>(token, 16);
}

/// A text from its opening quote on; the quote stays as the mark that tells texts from other words.
std::string takeText(std::string_view line, std::size_t& at)
{
    std::string text(1, line[at++]);
    for (; at < line.size(); ++at) {
        if (line[at] == '"') {
            ++at;
            return text;
        }
        const std::string_view escaped = line[at] == '\\' ? line.substr(at + 1, 1) : std::string_view();
        if (line[at] != '\\') {
            text += line[at];
        } else if (escaped == "\"" || escaped == "\\") {
            text += line[++at];
        } else if (escaped == "x") {
            text += static_cast<char>(hexPair(line.substr(at + 2, 2)));
            at += 3;
        } else {
            fail("unknown escape: \\" + std::string(escaped));
        }
    }
    fail("the text has no closing quote");
}

Words split(std::string_view line)
{
    Words words;
    for (std::size_t at = 0; (at = line.find_first_not_of(" \t\r", at)) < line.size() && line[at] != '#';) {
        if (line[at] == '"') {
            words.push_back(takeText(line, at));
        } else {
            const std::size_t end = std::min(line.find_first_of(" \t\r#\"", at), line.size());
            words.emplace_back(line.substr(at, end - at));
            at = end;
        }
    }
    return words;
}

std::array<unsigned char, 3> version(std::string text, std::size_t parts)
{
    std::replace(text.begin(), text.end(), '.', ' ');
    const Words numbers = split(text);
    if (numbers.size() != parts)
        fail("a version of " + std::to_string(parts) + " numbers is due");
    std::array<unsigned char, 3> parsed{};
    std::transform(numbers.begin(), numbers.end(), parsed.begin(), [](auto& n) { return parse<unsigned char>(n, 10); });
    return parsed;
}

/// Fails unless the statement has this many operands.
void expect(const Words& words, std::size_t operands)
{
    if (words.size() != 1 + operands)
        fail(words[0] + " takes " + std::to_string(operands) + " operands");
}

std::string unquoted(const std::string& token)
{
    if (!token.starts_with('"'))
        fail("not a text in quotes: " + token);
    return token.substr(1);
}

Layout readLayout(const Words& words)
{
    if (words[0] == "raw") {
        expect(words, 0);
        return [](auto& table) { return table.structures(); };
    }
    if (words[0] == "windows") {
        expect(words, 1);
        return [v = version(words[1], 3)](auto& table) { return table.windowsBlock(v[0], v[1], v[2]); };
    }
    if (words[0] != "entry-point")
        fail("not a statement between structures: " + words[0]);
    expect(words, 2);
    if (words[1] == "64")
        return [v = version(words[2], 3)](auto& table) { return table.dump64(v[0], v[1], v[2]); };
    if (words[1] == "32")
        return [v = version(words[2], 2)](auto& table) { return table.dump32(v[0], v[1]); };
    if (words[1] == "legacy")
        return [v = version(words[2], 2)](auto& table) { return table.dumpLegacy(v[0], v[1]); };
    fail("not an entry point: " + words[1]);
}

StructureBuilder& readStructure(TableBuilder& table, const Words& words)
{
    expect(words, 3);
    return table.add(number<std::uint8_t>(words[1]), number<std::uint16_t>(words[2]), number<std::uint8_t>(words[3]));
}

template <std::unsigned_integral T>
void readNumber(StructureBuilder& structure, const Words& words)
{
    expect(words, 2);
    structure.put(Field<T>{number<std::uint8_t>(words[1])}, number<T>(words[2]));
}

void readBytes(StructureBuilder& structure, const Words& words)
{
    if (words.size() < 3)
        fail("bytes takes an offset and at least one byte");
    Bytes values;
    for (std::size_t i = 2; i < words.size(); ++i)
        values.push_back(hexPair(words[i]));
    structure.bytes(number<std::uint8_t>(words[1]), values);
}

void readField(StructureBuilder& structure, const Words& words)
{
    if (words[0] == "byte") {
        readNumber<std::uint8_t>(structure, words);
    } else if (words[0] == "word") {
        readNumber<std::uint16_t>(structure, words);
    } else if (words[0] == "dword") {
        readNumber<std::uint32_t>(structure, words);
    } else if (words[0] == "qword") {
        readNumber<std::uint64_t>(structure, words);
    } else if (words[0] == "bytes") {
        readBytes(structure, words);
    } else if (words[0] == "text") {
        expect(words, 2);
        structure.text(number<std::uint8_t>(words[1]), unquoted(words[2]));
    } else if (words[0] == "string") {
        expect(words, 1);
        structure.string(unquoted(words[1]));
    } else {
        fail("not a statement of a structure: " + words[0]);
    }
}

Machine read(std::istream& lines, unsigned& lineNumber)
{
    TableBuilder table;
    StructureBuilder* structure = nullptr; // the one that waits for its end
    Layout layout;
    for (std::string line; std::getline(lines, line); ++lineNumber) {
        const Words words = split(line);
        if (words.empty())
            continue;
        if (structure && words == Words{"end"})
            structure = nullptr;
        else if (structure)
            readField(*structure, words);
        else if (words[0] == "structure")
            structure = &readStructure(table, words);
        else if (layout)
            fail("not a structure, and the layout is given already: " + words[0]);
        else
            layout = readLayout(words);
    }
    if (structure)
        fail("the last structure has no end");
    if (!layout)
        fail("the layout is missing");
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
