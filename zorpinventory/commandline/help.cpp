// The help, laid out from the declarations.
#include "command.h"

#include "services/utf8.h"

#include <algorithm>

namespace zorpinventory::commandline
{

namespace
{

using embedded_host::services::columnsOf;
using embedded_host::services::message;

constexpr std::size_t kColumns = 80;
constexpr std::size_t kExplanations = 26; ///< where they begin

/// Two columns; the second begins at `column`, two or more, and goes on below itself where the line is full. With none
/// on the left, 0 is for a text that takes whole lines.
std::string flowing(std::string left, std::size_t column, const std::string& right)
{
    std::size_t used = columnsOf(left);
    std::string text = std::move(left);
    const auto indent = [&] {
        if (column == 0)
            return;
        text.append(column - std::min(used, column - 2), ' ');
        used = std::max(used + 2, column);
    };
    indent();
    std::string_view rest = right;
    while (!rest.empty()) {
        // Scripts without blanks may go on anywhere.
        const auto blank = std::min(rest.find(' '), rest.size());
        std::string_view word = rest.substr(0, blank);
        if (columnsOf(word) > kColumns - column) {
            word = rest;
            embedded_host::services::takeCharacter(word);
            word = rest.substr(0, rest.size() - word.size());
        }
        if (used + columnsOf(word) > kColumns) {
            text.erase(text.find_last_not_of(' ') + 1);
            text += '\n';
            used = 0;
            indent();
        }
        text += word;
        used += columnsOf(word);
        rest.remove_prefix(word.size());
        if (!rest.empty() && rest.front() == ' ') {
            rest.remove_prefix(1);
            if (used + 1 < kColumns) {
                text += ' ';
                ++used;
            }
        }
    }
    while (text.ends_with(' '))
        text.pop_back();
    return text + "\n";
}

std::string row(const std::string& left, const std::string& right)
{
    return flowing("  " + left, kExplanations, right);
}

std::string optionRow(const Option& option)
{
    std::string left = option.names;
    if (left.starts_with("--"))
        left.insert(0, "    ");
    if (!option.isFlag())
        left += option.mayLackValue ? " [" + std::string(option.value) + "]" : " " + std::string(option.value);
    auto says = message(option.says);
    if (option.completes == Completes::Choices)
        says += ": " + std::string(option.choices);
    return row(left, says);
}

} // namespace

std::string help(std::span<const Command> commands, const Command* command)
{
    std::string text;
    if (command == nullptr) {
        text = message("Usage: zorpinventory [COMMAND] [SOURCE]... [OPTION]...") + "\n" +
               message("Tells what a machine is made of, and what changed.") + "\n\n" + message("Commands:") + "\n";
        for (const auto& each : commands)
            text += row(std::string(each.name) + " " + each.sources, message(each.says));
        text += "\n" + message("A source is:") + "\n";
        text += row(message("(nothing)"), message("this machine; reading its table needs root"));
        text += row("machine.dmi", message("a saved table in any layout, or a folder with one"));
        text += row("machine.json", message("what zorpsysinfosmbios2 -f json has written, best with --details"));
        text += row("-", message("the same on standard input"));
        text +=
            row("@3, @latest, @2026-11-01", message("a record of this machine in the history; of another: MACHINE@3"));
        text += "\n" + message("zorpinventory COMMAND --help tells of a command's options.") + "\n";
        return text;
    }
    text = message("Usage: zorpinventory %1 %2 [OPTION]...", command->name, command->sources) + "\n" +
           flowing({}, 0, message(command->says)) + "\n" + message("Options:") + "\n";
    for (const auto& option : command->options)
        text += optionRow(option);
    text += optionRow(kHelp) + optionRow(kVersion);
    text += "\n" + message("Exit code:") + "\n" + row("0", message(command->good));
    if (*command->otherwise != '\0')
        text += row("1", message(command->otherwise));
    text += row("2", message("it could not be done; one sentence on standard error says why"));
    return text;
}

} // namespace zorpinventory::commandline
