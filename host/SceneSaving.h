// The export service: has a scene written to a file by the first scene saver there is. Called by the commands
// that make drawings; tests and benchmarks call it as they do.
#pragma once

#include <filesystem>

#include "host/Host.h"
#include "host/io/Files.h"

namespace tzhost {

struct ExportOptions {
    bool preparatoryPass = false;  // ask the saver for one before the real pass
};

// Has the scene written to the file, by a saver that opens it by its temporary name, and leaves it to the
// caller to commit the file. Throws OperationError: steps "find saver", "verify" and "save". Messages of the
// saver go to the host's messages.
void exportScene(Host& host, Scene& scene, OutputFile& out, const ExportOptions& options = {});

// Makes the file, has it written, and commits it. When it throws, a file of that name is as it was before.
void exportFile(Host& host, Scene& scene, const std::filesystem::path& file,
                const ExportOptions& options = {});

}  // namespace tzhost
