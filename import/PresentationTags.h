// Presentation tags: a shape's own fill and stroke properties, as text on its polygon. Called by the tag
// chain.
#pragma once

#include <QDomNode>

namespace tzsvg {

class SVGLoader;

// Each gathers its group of properties, from "style" first and the presentation attribute where that gives
// nothing, and stores every value that is not empty, as found: nothing is parsed, converted or inherited. The
// fill group also stores the whole "style". False for a node that is not an element.
bool ApplyFillStyleTags(SVGLoader& loader, const QDomNode& node);
bool ApplyStrokeStyleTags(SVGLoader& loader, const QDomNode& node);

}  // namespace tzsvg
