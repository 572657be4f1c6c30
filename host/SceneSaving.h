// Exports: a scene is saved to a file by the first scene saver that is registered.
#pragma once

#include <filesystem>

#include "host/Host.h"
#include "host/io/Files.h"

namespace tzhost {

struct ExportOptions {
    bool preparatoryPass = false;  // ask the saver for one before the real pass
};

// Saves the scene to the file's temporary name; the caller commits the file. Throws OperationError: steps
// "find saver", "verify" and "save". The saver's messages go to the host's observer.
void exportScene(Host& host, Scene& scene, OutputFile& out, const ExportOptions& options = {});

// Saves and commits. When it throws, an existing file of that name is unchanged.
void exportFile(Host& host, Scene& scene, const std::filesystem::path& file,
                const ExportOptions& options = {});

}  // namespace tzhost
