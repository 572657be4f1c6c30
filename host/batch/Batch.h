// One command for many files: `tzhost import *.svg -o scenes/`. Each file is done as it would be alone; one
// that fails or crashes ends no other. Called by main().
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/batch/BatchPlan.h"
#include "host/commands/CommandContext.h"

namespace tzhost {

struct BatchCommand {
    std::string name;  // "import"
    std::function<int(CommandContext&, const CommandFiles&)> run;
    std::vector<std::filesystem::path> modules;
};

// What each file prints comes in the order of the files, then a line that counts them. The exit status: that
// of an interrupt, else 1 when a file failed.
int runBatch(const BatchCommand& command, const BatchPlan& plan, const BatchArguments& arguments,
             const std::shared_ptr<Terminal>& terminal);

}  // namespace tzhost
