#include "host/pages/Completions.h"

#include <cstring>
#include <set>

namespace tzhost {
namespace {

constexpr const char* kOrigin = "of tzhost, made from its description of the commands\n";

bool isFolder(const OptionHelp& option) {
    return option.value == "FOLDER" || option.value == "OUTDIR";
}
bool isNumber(const OptionHelp& option) {
    static const std::set<std::string> kNumbers = {"N", "LEVEL", "COLUMN", "ROW", "X", "Y"};
    return kNumbers.count(option.value) > 0;
}

template <class Words>
std::string joined(const Words& words, const char* between) {
    std::string all;
    for (const std::string& word : words) all += (all.empty() ? "" : between) + word;
    return all;
}

std::vector<std::string> optionNames(const CommandHelp& command) {
    std::vector<std::string> names;
    for (const OptionHelp& option : command.options)
        names.insert(names.end(), option.names.begin(), option.names.end());
    return names;
}

// With a backslash before each of the characters.
std::string escaped(const std::string& text, const char* characters) {
    std::string out;
    for (const char c : text) {
        if (std::strchr(characters, c)) out += '\\';
        out += c;
    }
    return out;
}

// The text in single quotes.
std::string quoted(const std::string& text) {
    std::string out = "'";
    for (const char c : text) out += c == '\'' ? "'\\''" : std::string(1, c);
    return out + "'";
}

const char* zshAction(const OptionHelp& option) {
    return isNumber(option) ? "" : isFolder(option) ? "_files -/" : "_files";
}

// A line of `_arguments` for each option.
std::string zshArguments(const CommandHelp& command) {
    std::string lines;
    int position = 0;
    for (const OptionHelp& option : command.options) {
        const std::string value = ":" + option.value + ":" + zshAction(option);
        if (option.names.empty()) {
            lines +=
                " \\\n            " + quoted((option.isRepeated ? "*" : std::to_string(++position)) + value);
            continue;
        }
        // One that was given is not offered again, by neither name.
        const std::string given = option.isRepeated ? "*" : "(" + joined(option.names, " ") + ")";
        for (const std::string& name : option.names) {
            lines += " \\\n            " + quoted(given + name + "[" + escaped(option.text, "[]:") + "]" +
                                                  (option.value.empty() ? "" : value));
        }
    }
    return lines;
}

std::string fishOption(const OptionHelp& option) {
    std::string line;
    for (const std::string& name : option.names)
        line += name[1] == '-' ? " -l " + name.substr(2) : " -s " + name.substr(1);
    if (isFolder(option)) {
        line += " -x -a '(__fish_complete_directories)'";
    } else if (!option.value.empty()) {
        line += isNumber(option) ? " -x" : " -r -F";
    }
    return line + " -d " + quoted(option.text);
}

}  // namespace

std::string bashCompletion(const std::vector<CommandHelp>& help) {
    std::vector<std::string> commands;
    std::string cases;
    std::set<std::string> folders;
    std::set<std::string> others;  // that take a value
    for (const CommandHelp& command : help) {
        for (const OptionHelp& option : command.options) {
            if (option.value.empty()) continue;
            (isFolder(option) ? folders : others).insert(option.names.begin(), option.names.end());
        }
        if (&command == &help.front()) continue;
        commands.push_back(command.name);
        cases += "    " + command.name + ") options='" + joined(optionNames(command), " ") + "' ;;\n";
    }
    return std::string("# Completion for bash ") + kOrigin + R"(
_tzhost() {
    local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command= options= i
    local program=')" +
           joined(optionNames(help.front()), " ") + R"('
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
        --module) ((++i)) ;;
        -*) ;;
        *)
            command=${COMP_WORDS[i]}
            break
            ;;
        esac
    done
    case $command in
)" + cases +
           R"(    esac
    COMPREPLY=()
    case $before in
    )" + joined(folders, " | ") +
           R"()
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        return
        ;;
    )" + joined(others, " | ") +
           R"() return ;; # a file, which bash completes by itself
    esac
    if [[ $current == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$program $options" -- "$current")
    elif [[ -z $command ]]; then
        mapfile -t COMPREPLY < <(compgen -W ')" +
           joined(commands, " ") + R"(' -- "$current")
    fi
}
complete -o default -F _tzhost tzhost
)";
}

std::string zshCompletion(const std::vector<CommandHelp>& help) {
    std::string commands;
    std::string cases;
    for (size_t i = 1; i < help.size(); ++i) {
        commands += "            " + quoted(help[i].name + ":" + help[i].text) + "\n";
        cases += "        " + help[i].name + ")\n            _arguments" + zshArguments(help[i]) +
                 "\n            ;;\n";
    }
    return std::string("#compdef tzhost\n# Completion for zsh ") + kOrigin + R"(
_tzhost() {
    local context state state_descr line
    typeset -A opt_args
    _arguments -C)" +
           zshArguments(help.front()) + R"( \
            '1:command:->command' \
            '*::argument:->argument'
    case $state in
    command)
        local -a commands=(
)" + commands +
           R"(        )
        _describe command commands
        ;;
    argument)
        case $line[1] in
)" + cases +
           R"(        esac
        ;;
    esac
}

_tzhost "$@"
)";
}

std::string fishCompletion(const std::vector<CommandHelp>& help) {
    std::string text = std::string("# Completion for fish ") + kOrigin;
    for (const OptionHelp& option : help.front().options)
        text += "complete -c tzhost" + fishOption(option) + "\n";
    for (size_t i = 1; i < help.size(); ++i) {
        const CommandHelp& command = help[i];
        text += "complete -c tzhost -n __fish_use_subcommand -f -a " + command.name + " -d " +
                quoted(command.text) + "\n";
        for (const OptionHelp& option : command.options) {
            if (option.names.empty()) continue;
            text += "complete -c tzhost -n '__fish_seen_subcommand_from " + command.name + "'" +
                    fishOption(option) + "\n";
        }
    }
    return text;
}

}  // namespace tzhost
