// Manual pages of tzhost, for man(1): one of the program and one of each command.
#pragma once

#include <string>
#include <vector>

#include "host/commandline/CommandHelp.h"

namespace tzhost {

struct ManualPage {
    std::string fileName;  // "tzhost-import.1"
    std::string text;
};

std::vector<ManualPage> manualPages(const std::vector<CommandHelp>& help);

}  // namespace tzhost
