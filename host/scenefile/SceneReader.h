// Reads a scene file into a scene. Called by the commands that take scene files. Nothing is added to the
// scene from a file with an error.
#pragma once

#include "host/io/InputFile.h"
#include "host/scene/Scene.h"

namespace tzhost {

// Adds the file's items to the scene. Throws OperationError: its reason says where in the file and what.
void readSceneFile(Scene& scene, const InputFile& file);

}  // namespace tzhost
