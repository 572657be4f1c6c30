// The vertices of a path, where markers stand.
#pragma once

#include <vector>

#include "normalize/geometry/Path.h"

namespace tznormalize {

struct Vertex {
    Point point;
    double direction;  // in degrees: of the way through it, half-way between coming and going
};

// The ends of all segments in order, a closing's included: the first is where markers start, the last where
// they end. Directions as SVG 1.1 (11.6.2, F.5) has them: segments of no length take that of their
// neighbours.
std::vector<Vertex> verticesOf(const Path& path);

}  // namespace tznormalize
