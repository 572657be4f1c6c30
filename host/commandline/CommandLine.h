// The command line: commands, options, help. Called by main().
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/batch/BatchPlan.h"
#include "host/commands/Commands.h"

namespace tzhost {

struct CommandLine {
    std::vector<std::string> modules;  // `--module`, any number of times; empty: the one beside tzhost
    bool isQuiet = false;              // `--quiet`
    bool isForced = false;             // `--force`
    std::string command;               // its name, "import"
    CommandFiles files;                // those that it was given
    std::vector<std::string> inputs;   // all that it reads
    // The command, empty when nothing is left to do, since help has been printed. It answers the program's
    // exit status, nearly always 0: what fails is thrown.
    std::function<int(CommandContext&, const CommandFiles&)> run;
    // Has a folder when `run` is to be called for each of the inputs.
    BatchArguments batch;
};

// Throws UsageError.
CommandLine parseCommandLine(int argc, char** argv);

}  // namespace tzhost
