// Writes a scene as a scene file: JSON, streamed, one point and one polygon a line. Called by the commands
// that make scene files. SceneReader reads it back.
#pragma once

#include <filesystem>

#include "host/io/Files.h"
#include "host/scene/Scene.h"

namespace tzhost {

// Writes all of it, and leaves it to the caller to commit the file. Throws OperationError.
void writeScene(const Scene& scene, OutputFile& out);

// Writes and commits.
void writeSceneFile(const Scene& scene, const std::filesystem::path& file);

}  // namespace tzhost
