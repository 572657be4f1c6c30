// Drawings made up at random, each of a mixture of what the renderer knows: all shapes, nested transforms,
// gradients of all kinds and chains of them, `use`, opacity, dashes, caps, joins, pens that do not scale,
// text, nested `svg`, markers, clip paths, masks, patterns, style sheets, percentages and units, visibility,
// entities. Most are of features that let elements influence each other. The same drawing for the same
// number.
#pragma once

#include <cstdint>
#include <string>

namespace tzbench {

std::string featureDrawing(uint32_t number);

}  // namespace tzbench
