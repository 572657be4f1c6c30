// Completions of tzhost's command line for shells: scripts that they read.
#pragma once

#include <string>
#include <vector>

#include "host/commandline/CommandHelp.h"

namespace tzhost {

std::string bashCompletion(const std::vector<CommandHelp>& help);
std::string zshCompletion(const std::vector<CommandHelp>& help);
std::string fishCompletion(const std::vector<CommandHelp>& help);

}  // namespace tzhost
