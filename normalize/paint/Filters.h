// Filters, with all lengths in the page's units.
#pragma once

#include "normalize/paint/Effect.h"

namespace tznormalize {

struct Conversion;
struct Place;
class PlacedPaths;

// Whether nothing that the filter of place.style gives is on the page. A filter shows nothing outside of its
// region.
bool isFilteredOffPage(const Conversion& conversion, const Place& place, const PlacedPaths& object);

// The `filter` of place.style for an object that stands at `place` and is made of `object`: a reference; the
// functions of CSS (blur() and the like) are left out with a note.
Effect resolveFilter(Conversion& conversion, const Place& place, const PlacedPaths& object);

}  // namespace tznormalize
