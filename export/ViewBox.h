// The view box of the document: grows mesh by mesh over one save.
#pragma once

#include <optional>
#include <string>

#include "export/ProjectionPlane.h"
#include "hostsdk/TzTypes.h"

namespace tzsvg {

// Single precision throughout, as the box is kept.
struct ViewBox {
    float x = 0.0F;
    float y = 0.0F;
    float width = -1.0F;  // below 0, as the height: nothing accumulated yet
    float height = -1.0F;

    // Grows to hold a mesh's box. An empty box still counts with its right and bottom edge at -1, so that a
    // box wholly left of or above -1 grows to there. Meant so, for the same reason as the margin below;
    // ViewBox/emptyEdge pins it. False, with the box unchanged, when single precision does not hold the
    // result.
    bool add(const ViewBox& candidate);

    // The four numbers as "%g %g %g %g".
    std::string text() const;
};

// The box that a `VBOX` text names; nothing when it does not read as four finite numbers.
std::optional<ViewBox> readViewBox(const std::string& text);

// The box for a mesh that names none: its bounding box in the plane, with a margin. Nothing when single
// precision does not hold it.
std::optional<ViewBox> viewBoxOf(const TzBox& bounds, PlaneAxis axis);

}  // namespace tzsvg
