// Masks, with their region in the page's units and their content as a group of the definitions of its own.
#pragma once

#include "normalize/paint/Effect.h"

namespace tznormalize {

struct Conversion;
struct Place;
class PlacedPaths;

// The `mask` of place.style for an object that stands at `place` and is made of `object`.
Effect resolveMask(Conversion& conversion, const Place& place, const PlacedPaths& object);

}  // namespace tznormalize
