// zorpinventory show
#include "commands.h"

#include "document/problem.h"
#include "platform/surroundings.h"
#include "services/utf8.h"
#include "sources/sources.h"
#include "tell/show.h"
#include "texts/type_words.h"

#include <algorithm>
#include <charconv>

namespace zorpinventory::commands
{

namespace
{

using commandline::Arguments;
using commandline::Completes;
using commandline::Option;
using document::Device;
using embedded_host::services::message;
using embedded_host::services::translatable;
using embedded_host::texts::kTypeWords;

/// The names in a table, with blanks between them.
template <auto& kTable, auto kName>
struct Names
{
    static constexpr std::size_t kSize = [] {
        std::size_t size = 0;
        for (const auto& each : kTable)
            size += (each.*kName).size() + 1;
        return size;
    }();
    static constexpr auto kLetters = [] {
        std::array<char, kSize> letters{};
        auto* out = letters.data();
        for (const auto& each : kTable) {
            for (const char c : each.*kName)
                *out++ = c;
            *out++ = ' ';
        }
        return letters;
    }();
    static constexpr std::string_view kText{kLetters.data(), kSize - 1};
};

constexpr Option kForm{.names = "-f, --format",
                       .value = "FORMAT",
                       .says = translatable("how it is told"),
                       .completes = Completes::Choices,
                       .choices = "text json ndjson csv"};
constexpr Option kAll{.names = "-a, --all", .says = translatable("text: what is unknown, empty or internal too")};
constexpr Option kType{.names = "-t, --type",
                       .value = "TYPE",
                       .says = translatable("only these types: 17,4 or memory, slot, cache ..."),
                       .completes = Completes::Names,
                       .choices = Names<kTypeWords, &embedded_host::texts::TypeWord::word>::kText,
                       .repeatable = true};
constexpr Option kHandle{.names = "-H, --handle",
                         .value = "HANDLE",
                         .says = translatable("only the devices of these handles: 0x1100"),
                         .repeatable = true};
constexpr Option kProperty{.names = "-p, --property",
                           .value = "NAME",
                           .says = translatable("only these properties: t17_serial; as text, bare values, one a line"),
                           .repeatable = true};
constexpr Option kString{.names = "-s, --string",
                         .value = "KEYWORD",
                         .says = translatable("what is known as system-serial-number and the like; without KEYWORD, "
                                              "the names"),
                         .completes = Completes::Names,
                         .choices = Names<knowledge::kKeywords, &knowledge::Keyword::name>::kText,
                         .mayLackValue = true};
constexpr Option kOptions[] = {kType,
                               kHandle,
                               kProperty,
                               kString,
                               kForm,
                               kAll,
                               commandline::kMachine,
                               commandline::kDatabase,
                               commandline::kOutput,
                               commandline::kLanguage};

/// The words given with an option, those between commas too.
std::vector<std::string> wordsOf(const Arguments& arguments, const Option& option)
{
    std::vector<std::string> words;
    const auto found = arguments.given.find(option.key());
    if (found == arguments.given.end())
        return words;
    for (std::string_view rest : found->second) {
        for (;;) {
            const auto comma = rest.find(',');
            words.emplace_back(rest.substr(0, comma));
            if (comma == std::string_view::npos)
                break;
            rest.remove_prefix(comma + 1);
        }
    }
    return words;
}

/// The number that is the whole text; nothing where there is none or it is above `most`.
std::optional<unsigned> numberIn(std::string_view text, unsigned most)
{
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    if (isHex)
        text.remove_prefix(2);
    unsigned number = 0;
    const auto* end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, number, isHex ? 16 : 10);
    return error == std::errc() && read == end && number <= most ? std::optional(number) : std::nullopt;
}

void addType(choice::Choice& choice, const std::string& text)
{
    constexpr unsigned kLastType = 255;
    const auto word = std::ranges::find(kTypeWords, text, &embedded_host::texts::TypeWord::word);
    if (word != std::end(kTypeWords)) {
        for (const auto type : word->all())
            choice.types.insert(type);
        return;
    }
    const auto number = numberIn(text, kLastType);
    if (!number) {
        std::string words;
        for (const auto& each : kTypeWords)
            words.append(words.empty() ? "" : ", ").append(each.word);
        throw Problem(message("\"%1\" is no structure type; give numbers from 0 to 255 or %2", text, words));
    }
    choice.types.insert(*number);
}

choice::Choice choiceIn(const Arguments& arguments)
{
    constexpr unsigned kLastHandle = 0xFFFF;
    choice::Choice choice;
    for (const auto& word : wordsOf(arguments, kType))
        addType(choice, word);
    for (const auto& word : wordsOf(arguments, kHandle)) {
        const auto handle = numberIn(word, kLastHandle);
        if (!handle)
            throw Problem(message("\"%1\" is no handle; give numbers from 0x0000 to 0xFFFF", word));
        choice.handles.insert(static_cast<std::uint16_t>(*handle));
    }
    choice.properties = wordsOf(arguments, kProperty);
    return choice;
}

/// A name that no device has and that is nobody's is a slip.
void requireKnown(const choice::Choice& choice, const document::Document& document)
{
    for (const auto& name : choice.properties) {
        const auto hasIt = [&](const Device& device) { return device.find(name) != nullptr; };
        if (!tell::isDeclared(name) && std::ranges::none_of(document.devices(), hasIt))
            throw Problem(message("there is no property %1; show -f csv tells their names", name));
    }
}

Exit tellNames(const Arguments& arguments)
{
    write(arguments, [](auto& output) {
        for (const auto& keyword : knowledge::kKeywords) {
            output.write(keyword.name);
            output.write("\n");
        }
    });
    return Exit::Good;
}

Exit tellString(const Arguments& arguments, const std::string& source, const std::string& name)
{
    const auto keyword = std::ranges::find(knowledge::kKeywords, name, &knowledge::Keyword::name);
    if (keyword == std::end(knowledge::kKeywords))
        throw Problem(message("there is no name \"%1\"; show --string lists them", name));
    const auto texts = choice::textsOf(sources::load(source, place(arguments)), *keyword);
    write(arguments, [&](auto& output) {
        for (const auto& text : texts) {
            output.write(embedded_host::services::printable(text));
            output.write("\n");
        }
    });
    return texts.empty() ? Exit::Otherwise : Exit::Good;
}

embedded_host::outline::Looks treeLooks(const Arguments& arguments)
{
    embedded_host::outline::Looks looks{.ascii = !embedded_host::platform::showsUtf8()};
    if (const auto terminal = embedded_host::platform::terminal();
        terminal && !arguments.has(commandline::kOutput.key())) {
        looks.columns = terminal->columns;
        looks.colours = terminal->colours;
    }
    return looks;
}

Exit run(const Arguments& arguments)
{
    const auto source = arguments.sources.empty() ? sources::kThisMachine : arguments.sources.front();
    const auto choice = choiceIn(arguments);
    const auto form = arguments.value(kForm.key()).value_or("text");
    if (arguments.has(kString.key())) {
        if (!choice.everything() || form != "text")
            throw Problem(message("--string is told as text and without --type, --handle and --property"));
        const auto name = arguments.value(kString.key());
        return name && !name->empty() ? tellString(arguments, source, *name) : tellNames(arguments);
    }

    const auto document = sources::load(source, place(arguments));
    requireKnown(choice, document);
    const tell::Shown shown{document, choice, choice::chosen(document, choice)};
    const bool found = std::ranges::find(shown.devices, true) != shown.devices.end();
    write(arguments, [&](auto& output) {
        if (form == "json")
            tell::showAsJson(output, shown);
        else if (form == "ndjson")
            tell::showAsLines(output, shown);
        else if (form == "csv")
            tell::showAsCsv(output, shown);
        else if (!choice.properties.empty())
            tell::showAsTexts(output, shown);
        else if (found)
            tell::showAsTree(output, shown, treeLooks(arguments), arguments.has(kAll.key()));
    });
    return found ? Exit::Good : Exit::Otherwise;
}

} // namespace

const commandline::Command kShow{.name = "show",
                                 .says = translatable("devices and properties, chosen"),
                                 .sources = "[SOURCE]",
                                 .leastSources = 0,
                                 .mostSources = 1,
                                 .options = kOptions,
                                 .good = translatable("what was asked for was told"),
                                 .otherwise = translatable("there is no such device or property"),
                                 .run = run};

} // namespace zorpinventory::commands
