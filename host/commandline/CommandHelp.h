// What the help says of the commands, as plain data: manual pages and completions are made of it.
#pragma once

#include <string>
#include <vector>

namespace tzhost {

struct OptionHelp {
    std::vector<std::string> names;  // "-o", "--output"; empty: an argument, known by its value
    std::string value;               // "FILE"; empty: a flag
    std::string text;
    std::string byDefault;  // may be empty
    bool isRequired = false;
    bool isRepeated = false;
};

struct CommandHelp {
    std::string name;
    std::string text;  // what it does, in a line
    std::string more;  // a footer: prose, and lines of examples, which are indented
    std::vector<OptionHelp> options;
};

// The program itself, with the options that every command has; then its commands.
std::vector<CommandHelp> commandHelp();

// "1.0.0"
const char* programVersion();

}  // namespace tzhost
