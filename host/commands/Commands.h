// The commands of tzhost, one file each: every function adds its command to the command line. main() lists
// them, and runs the one that was given.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

#include "host/Host.h"
#include "host/commands/Terminal.h"

namespace tzhost {

// What a command works with: a host whose module is loaded and whose observer is the terminal.
struct CommandContext {
    Host& host;
    Terminal& terminal;
};

// A command that has been parsed.
struct CommandRun {
    // What the command reads; empty when it is the module. Names what fails outside of any step.
    std::string file;
    // Everything that it holds of the module is gone when it returns.
    std::function<void(const CommandContext&)> work;

    // Instead of `work`, for a command that needs no module: none is loaded.
    std::function<void(Terminal&)> workAlone = nullptr;
};

// What has been printed is out: called before an output file gets its name, so that there is none without its
// summary, and at the end of every command. Throws OperationError, step "write".
void requirePrinted();

// Each adds a sub-command, and sets `run` when it is the one that was given.
void addServersCommand(CLI::App& app, CommandRun& run);
void addImportCommand(CLI::App& app, CommandRun& run);
void addExportCommand(CLI::App& app, CommandRun& run);
void addRoundTripCommand(CLI::App& app, CommandRun& run);
void addPreviewCommand(CLI::App& app, CommandRun& run);
void addImageInfoCommand(CLI::App& app, CommandRun& run);
void addTileCommand(CLI::App& app, CommandRun& run);
void addSampleCommand(CLI::App& app, CommandRun& run);
void addPyramidCommand(CLI::App& app, CommandRun& run);
void addNormalizeCommand(CLI::App& app, CommandRun& run);

}  // namespace tzhost
