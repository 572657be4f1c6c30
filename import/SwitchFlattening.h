// Flattening of "switch" elements: the scene has no alternatives, so every alternative is imported. Called by
// SVGLoader before the captures.
#pragma once

#include "import/DocumentSurvey.h"

namespace tzsvg {

// Replaces every "switch" by its children, in document order, nested switches included. The survey stays
// good, but for its switches, which are gone. Linear in the document.
void flattenSwitches(DocumentSurvey& survey);

}  // namespace tzsvg
