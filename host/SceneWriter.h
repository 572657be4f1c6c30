// Writes a scene as a scene file: JSON, streamed, one point and one polygon a line. Called by the commands
// that make scene files. SceneReader reads it back.
#pragma once

#include <filesystem>

#include "host/Scene.h"

namespace tzhost {

// The file appears when it is complete. Throws OperationError.
void writeSceneFile(const Scene& scene, const std::filesystem::path& file);

}  // namespace tzhost
