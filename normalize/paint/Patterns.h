// Patterns: a tile in the page's units, its content converted.
#pragma once

#include <optional>

#include "normalize/paint/Paint.h"

namespace tznormalize {

class SourceElement;

// The paint that a pattern comes to. Its tile begins at 0,0 of its own space and patternTransform places it:
// renderers differ about tiles that begin elsewhere. Nothing where it has no tile, or leads back into itself:
// the fallback holds.
std::optional<Paint> patternPaint(Conversion& conversion, const SourceElement& pattern, const Place& place,
                                  const PlacedPaths& shape);

}  // namespace tznormalize
