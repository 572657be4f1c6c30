// The command line: commands, options, help. Called by main().
#pragma once

#include <functional>
#include <stdexcept>
#include <string>

#include "host/commands/Commands.h"

namespace tzhost {

// Wrong usage; what() says what is wrong.
class UsageError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct CommandLine {
    std::string module;   // `--module`; empty: the one beside tzhost
    std::string command;  // its name, "import"
    std::string in;       // the file that the command reads; empty when it is the module
    // The command: one of these. Both are empty when nothing is left to do, since help has been printed.
    // They answer the program's exit status, nearly all 0: what fails is thrown.
    std::function<int(const CommandContext&)> run;
    std::function<int(Terminal&)> runAlone;  // of a command that needs no module
};

// Throws UsageError.
CommandLine parseCommandLine(int argc, char** argv);

}  // namespace tzhost
