// Draws a scene as a picture, for people who want to see what was imported. Called by `tzhost preview`.
#pragma once

#include <QImage>

#include "host/scene/Scene.h"

namespace tzhost {

// All meshes, seen along z and fitted into the picture with a margin; the long side has `longSide` pixels.
// Throws CTzError when the scene is too large for a picture, or there is no memory for one.
QImage drawScene(const Scene& scene, int longSide);

}  // namespace tzhost
