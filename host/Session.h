// A host with its module: what a command works with.
#pragma once

#include <filesystem>

#include "host/Host.h"
#include "host/ModuleLibrary.h"

namespace tzhost {

struct Session {
    // Throws OperationError when the module cannot be loaded.
    explicit Session(const std::filesystem::path& moduleFile) : module(host, moduleFile) {}

    Host host;
    ModuleLibrary module;
};

}  // namespace tzhost
