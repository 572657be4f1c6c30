// The one description of tzhost's commands: names, arguments, options, help. Parsed by CommandLine.
#pragma once

#include <CLI/CLI.hpp>

#include "host/commandline/CommandLine.h"

namespace tzhost {

// Describes the program and all its commands. Once parsed, `line` has what was given; it must outlive
// `program`.
void describeCommands(CLI::App& program, CommandLine& line);

}  // namespace tzhost
