// The commands of tzhost, one file each: every function adds its command to the command line. main() lists
// them, and runs the one that was given.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>

#include "host/Session.h"

namespace tzhost {

// Runs a command that has been parsed. Everything that it holds of the module is gone when it returns.
using CommandRun = std::function<void(Session&)>;

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

}  // namespace tzhost
