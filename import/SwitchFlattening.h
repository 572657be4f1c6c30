// Flattening of "switch" elements: the scene has no alternatives, so every alternative is imported. Called by
// SVGLoader before the captures.
#pragma once

#include "import/DocumentSurvey.h"

namespace tzsvg {

// Replaces every "switch" by clones of its children, in document order, nested switches included. The clones
// have no line number (-1): that is how the log shows them. The survey is out of date afterwards. False when
// a switch has no parent. Linear in the document: however deep switches are nested, what they hold is cloned
// once and moved once.
bool flattenSwitches(const DocumentSurvey& survey);

}  // namespace tzsvg
