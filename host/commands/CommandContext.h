// What a command works with: the terminal, and a host whose modules are loaded when it is asked for, since
// some commands need none.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "host/ModuleLibrary.h"
#include "host/commands/Terminal.h"

namespace tzhost {

class CommandContext {
  public:
    CommandContext(std::vector<std::filesystem::path> modules, std::shared_ptr<Terminal> terminal)
        : modules_(std::move(modules)), terminal_(std::move(terminal)) {}

    Terminal& terminal() { return *terminal_; }

    // Throws OperationError when a module cannot be loaded.
    Host& host();
    bool hasNoHost() const { return failed_; }  // since a module could not be loaded

    // Unloads the modules, after the last command. What they failed to release is a warning.
    void close();

  private:
    const std::vector<std::filesystem::path> modules_;
    const std::shared_ptr<Terminal> terminal_;
    std::optional<Session> session_;
    bool failed_ = false;
};

}  // namespace tzhost
