// The region of a mask or a filter.
#pragma once

#include <optional>

#include "normalize/document/Names.h"
#include "normalize/geometry/Box.h"

namespace tznormalize {

class OutputElement;
class SourceElement;
struct Conversion;
struct Place;

// The region on the page that an element's x, y, width and height give, read in the units that its attribute
// `units` names. `box` is that of the object, in the space of place.ctm. A turned region becomes the upright
// one around it. Nothing where the box is needed and missing, or where the region has no area.
std::optional<Box> wholeRegion(const SourceElement& element, Name units, const Place& place,
                               const std::optional<Box>& box);

// What of it is no further than a few pages away: a renderer makes room for all of it.
std::optional<Box> effectRegion(Conversion& conversion, const SourceElement& element, Name units,
                                const Place& place, const std::optional<Box>& box);

void setRegion(OutputElement& out, const char* units, const Box& region);

}  // namespace tznormalize
