// The export service: has a scene written to a file by the first scene saver there is. Called by the commands
// that make drawings; tests and benchmarks call it as they do.
#pragma once

#include <filesystem>

#include "host/Host.h"

namespace tzhost {

struct ExportOptions {
    bool preparatoryPass = false;  // ask the saver for one before the real pass
};

// Writes the scene as a drawing. Throws OperationError, and a file of that name is as it was before: steps
// "find saver", "verify" and "save". Messages of the saver go to the host's messages.
void exportFile(Host& host, Scene& scene, const std::filesystem::path& file,
                const ExportOptions& options = {});

}  // namespace tzhost
