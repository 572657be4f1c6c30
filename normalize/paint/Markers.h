// Markers: carried as attributes of a group around the shape, since attributes of groups come back and those
// of shapes do not.
#pragma once

#include <string>
#include <vector>

namespace tznormalize {

class SourceElement;
struct Conversion;
struct Place;

struct MarkerAttribute {
    const char* name;   // "marker-start", "marker-mid", "marker-end"
    std::string value;  // "url(#marker2)"
};

// Whether place.style names markers and the shape is one that has any (path, line, polyline, polygon).
bool hasMarkers(const SourceElement& shape, const Place& place);

// What to set on the group around the shape. `strokeWidth` is the shape's, in its own space, whether it is
// stroked or not.
std::vector<MarkerAttribute> markerAttributes(Conversion& conversion, const SourceElement& shape,
                                              const Place& place, double strokeWidth);

}  // namespace tznormalize
