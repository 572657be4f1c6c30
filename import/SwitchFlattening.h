// Flattening of "switch" elements: the scene has no alternatives, so every alternative is imported. Called by
// SVGLoader before the captures.
#pragma once

#include <QDomDocument>

#include "import/DocumentSurvey.h"

namespace tzsvg {

// Replaces every "switch" by clones of its children, in document order, nested switches included. The clones
// have no line number (-1): that is how the log shows them. False when a switch has no parent. Linear in the
// document: what nested switches hold is cloned once.
bool flattenSwitches(const DocumentSurvey& survey);

}  // namespace tzsvg
