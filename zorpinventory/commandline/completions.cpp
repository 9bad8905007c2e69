// Completions for three shells, made from the declarations. No text in these has a quotation mark or a bracket.
#include "completions.h"

#include <algorithm>
#include <set>

namespace zorpinventory::commandline
{

namespace
{

/// The command's options, with those that every command has.
std::vector<Option> optionsOf(const Command& command)
{
    std::vector<Option> options(command.options.begin(), command.options.end());
    options.push_back(kHelp);
    options.push_back(kVersion);
    return options;
}

/// "-f, --format" as its names: "-f", "--format".
std::vector<std::string> namesOf(const Option& option)
{
    std::vector<std::string> names;
    std::string_view rest = option.names;
    for (;;) {
        const auto comma = rest.find(", ");
        names.emplace_back(rest.substr(0, comma));
        if (comma == std::string_view::npos)
            return names;
        rest.remove_prefix(comma + 2);
    }
}

std::string joined(const std::vector<std::string>& words, std::string_view between)
{
    std::string text;
    for (const auto& word : words)
        text.append(text.empty() ? "" : between).append(word);
    return text;
}

std::string commandNames(std::span<const Command> commands, std::string_view between)
{
    std::vector<std::string> names;
    for (const auto& command : commands)
        names.emplace_back(command.name);
    return joined(names, between);
}

/// What tells the machines of the history, one a line.
constexpr std::string_view kMachines = "zorpinventory log --machines --names 2>/dev/null";

/// The commands that take machines instead of sources.
std::string commandsOfMachines(std::span<const Command> commands, std::string_view between)
{
    std::vector<std::string> names;
    for (const auto& command : commands)
        if (command.completes == Completes::Machines)
            names.emplace_back(command.name);
    return joined(names, between);
}

} // namespace

std::string bashCompletion(std::span<const Command> commands)
{
    std::string text =
        "# Completion for bash, loaded by the package bash-completion. Made from the declarations of the "
        "commands.\n\n"
        "_zorpinventory_machines() {\n"
        "    local machine\n"
        "    while IFS= read -r machine; do\n"
        "        printf -v machine %q \"$machine\"\n"
        "        [[ $machine != \"$cur\"* ]] || COMPREPLY+=(\"$machine\")\n"
        "    done < <(" +
        std::string(kMachines) +
        ")\n"
        "}\n\n"
        "_zorpinventory() {\n"
        "    local cur prev words cword split\n"
        "    _init_completion -s || return\n\n"
        "    local options values=\"\"\n"
        "    case ${words[1]} in\n";
    for (const auto& command : commands) {
        std::vector<std::string> words;
        for (const auto& option : optionsOf(command))
            std::ranges::move(namesOf(option), std::back_inserter(words));
        const bool isFirst = &command == &commands.front();
        const auto line = "        " + std::string(command.name) + ") options=\"" + joined(words, " ") + "\" ;;\n";
        text += isFirst ? "" : line;
        if (&command == &commands.back()) {
            words.clear();
            for (const auto& option : optionsOf(commands.front()))
                std::ranges::move(namesOf(option), std::back_inserter(words));
            text += "        *) options=\"" + joined(words, " ") + "\" ;;\n";
        }
    }
    text += "    esac\n    case $prev in\n";
    std::set<std::string> told;
    for (const auto& command : commands) {
        for (const auto& option : command.options) {
            if (option.isFlag() || !told.insert(option.names).second)
                continue;
            text += "        " + joined(namesOf(option), " | ") + ") ";
            if (!option.choices.empty())
                text += "values=\"" + std::string(option.choices) + "\" ;;\n";
            else if (option.completes == Completes::Machines)
                text += "_zorpinventory_machines; return ;;\n";
            else
                text += std::string(option.completes == Completes::Files ? "_filedir; " : "") + "return ;;\n";
        }
    }
    text += "        *)\n"
            "            $split && return\n"
            "            if [[ $cur == -* ]]; then\n"
            "                values=$options\n"
            "            elif [[ ${words[1]} == @(" +
            commandsOfMachines(commands, "|") +
            ") ]]; then\n"
            "                _zorpinventory_machines\n"
            "            else\n"
            "                _filedir\n"
            "                ((cword == 1)) && values=\"" +
            commandNames(commands, " ") +
            "\"\n"
            "            fi\n"
            "            ;;\n"
            "    esac\n"
            "    local matches\n"
            "    mapfile -t matches < <(compgen -W \"$values\" -- \"$cur\")\n"
            "    COMPREPLY+=(\"${matches[@]}\")\n"
            "} && complete -F _zorpinventory zorpinventory\n";
    return text;
}

std::string zshCompletion(std::span<const Command> commands)
{
    std::string text = "#compdef zorpinventory\n# Completion for zsh. Made from the declarations of the commands.\n\n"
                       "_zorpinventory_machines() {\n"
                       "    local -a machines=(\"${(@f)$(" +
                       std::string(kMachines) +
                       ")}\")\n"
                       "    compadd -a machines\n"
                       "}\n\n"
                       "local -a commands=(\n";
    for (const auto& command : commands)
        text += "    '" + std::string(command.name) + ":" + command.says + "'\n";
    text += ")\nlocal command=" + std::string(commands.front().name) +
            "\nif ((CURRENT == 2)); then\n"
            "    _describe command commands\n"
            "elif ((${#commands[(r)${words[2]}:*]})); then\n"
            "    command=${words[2]}\n"
            "    shift words\n"
            "    ((CURRENT--))\n"
            "fi\n"
            "case $command in\n";
    for (const auto& command : commands) {
        text += "    " + std::string(command.name) + ")\n        _arguments -s -S";
        for (const auto& option : optionsOf(command)) {
            const auto names = namesOf(option);
            text += " \\\n            ";
            const char* value = option.isFlag() ? "" : "=";
            if (option.repeatable)
                text += "'*'";
            else
                text.append("'(").append(joined(names, " ")).append(")'");
            if (names.size() == 1)
                text.append("'").append(names[0]).append(value).append("'");
            else
                text.append("{").append(names[0]).append(option.isFlag() ? "," : "+,").append(names[1]).append(value) +=
                    "}";
            text.append("'[").append(option.says).append("]");
            if (!option.isFlag())
                text += ":" + std::string(option.value) + ":";
            if (!option.choices.empty())
                text += "(" + std::string(option.choices) + ")";
            if (option.completes == Completes::Files)
                text += "_files";
            if (option.completes == Completes::Machines)
                text += "_zorpinventory_machines";
            text += "'";
        }
        if (command.mostSources != 0)
            text += command.completes == Completes::Machines ? " \\\n            '*:machine:_zorpinventory_machines'"
                                                             : " \\\n            '*:source:_files'";
        text += "\n        ;;\n";
    }
    return text + "esac\n";
}

std::string fishCompletion(std::span<const Command> commands)
{
    std::string text = "# Completion for fish. Made from the declarations of the commands.\n\n"
                       "function __zorpinventory_is\n"
                       "    set -l words (commandline -opc)\n"
                       "    set -l command " +
                       std::string(commands.front().name) + "\n    contains -- \"$words[2]\" " +
                       commandNames(commands, " ") +
                       "; and set command $words[2]\n"
                       "    test $command = $argv[1]\n"
                       "end\n\n";
    for (const auto& command : commands)
        text += "complete -c zorpinventory -n 'test (count (commandline -opc)) -eq 1' -a " + std::string(command.name) +
                " -d '" + command.says + "'\n";
    for (const auto& command : commands) {
        if (command.completes == Completes::Machines)
            text += "complete -c zorpinventory -n '__zorpinventory_is " + std::string(command.name) + "' -f -a '(" +
                    std::string(kMachines) + ")'\n";
        for (const auto& option : optionsOf(command)) {
            text += "complete -c zorpinventory -n '__zorpinventory_is " + std::string(command.name) + "'";
            for (const auto& name : namesOf(option))
                text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
            if (option.completes == Completes::Files)
                text += " -r -F";
            else if (!option.isFlag())
                text += " -x";
            if (!option.choices.empty())
                text += " -a '" + std::string(option.choices) + "'";
            if (option.completes == Completes::Machines)
                text += " -a '(" + std::string(kMachines) + ")'";
            text += " -d '" + std::string(option.says) + "'\n";
        }
    }
    return text;
}

} // namespace zorpinventory::commandline
