// Where a scene has the drawing that was imported into it. Called by `tzhost preview`.
#pragma once

#include <optional>

#include "host/Drawing.h"
#include "host/Host.h"

namespace tzhost {

struct DrawingPlace {
    double origin = 0.0;  // the height in the scene at which the drawing has y = 0
    double width = 0.0;   // of the drawing by its root's attributes, in scene units
    double height = 0.0;
};

// An import turns the drawing over about the lowest of its shapes, drawn or not, and the scene does not keep
// which that was, nor the size of the drawing: so the drawing is imported once more, with a mark in it.
// Nothing when nothing needs to know, and when the mark cannot be put or found.
std::optional<DrawingPlace> findDrawing(Host& host, const Scene& scene, const Drawing& drawing, bool forPage);

}  // namespace tzhost
