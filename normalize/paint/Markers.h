// Markers: drawn where they stand, as shapes. Kept as such they would follow the changed outlines of the
// shapes that come back, and no mesh would show them.
#pragma once

#include <cstddef>

namespace tznormalize {

class OutputElement;
class Path;
class SourceElement;
struct Conversion;
struct Place;
struct Target;

// Whether place.style names markers and the shape is one that has any (path, line, polyline, polygon).
bool hasMarkers(const SourceElement& shape, const Place& place);

// Appends the markers of a shape to `out`, in the order of drawing: start, mid, end. `path` is its outline in
// its own space, `strokeWidth` its stroke's width there, whether it is stroked or not. At most kMostMarkers
// of one shape are drawn.
void drawMarkers(Conversion& conversion, const SourceElement& shape, const Path& path, const Place& place,
                 double strokeWidth, OutputElement& out, Target& target);

constexpr size_t kMostMarkers = 10'000;

}  // namespace tznormalize
