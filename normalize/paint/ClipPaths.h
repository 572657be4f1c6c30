// Clip paths, written under the root beside the definitions: inside the definitions they would double with
// each round trip.
#pragma once

#include "normalize/geometry/Path.h"
#include "normalize/paint/Effect.h"

namespace tznormalize {

struct Conversion;
struct Place;
class PlacedPaths;

// The `clip-path` of place.style for an object that stands at `place` and is made of `object`.
Effect resolveClip(Conversion& conversion, const Place& place, const PlacedPaths& object);

// A clip path that lets through what lies in `path`, which is in page space: "url(#clip3)".
std::string clipToPath(Conversion& conversion, const Path& path);

}  // namespace tznormalize
