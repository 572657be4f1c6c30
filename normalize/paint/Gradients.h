// Gradients: resolved along their chain of references, in the page's units.
#pragma once

#include <optional>

#include "normalize/paint/Paint.h"

namespace tznormalize {

class SourceElement;

// The paint that a linearGradient or radialGradient comes to: a definition, or a plain colour where it has
// one stop only or no extent. Nothing where its box is needed and has no area: the fallback holds.
std::optional<Paint> gradientPaint(Conversion& conversion, const SourceElement& gradient, const Place& place,
                                   const PlacedPaths& shape);

}  // namespace tznormalize
