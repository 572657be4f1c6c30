// Presentation tags: a shape's own fill and stroke properties, as text on its polygon. Called by the tag
// chain.
#pragma once

namespace tzsvg {

class ShapeElement;
class SVGLoader;

// Each gathers its group of properties, from "style" first and the presentation attribute where that gives
// nothing, and stores every value that is not empty, as found: nothing is parsed, converted or inherited. The
// fill group also stores the whole "style".
void ApplyFillStyleTags(SVGLoader& loader, const ShapeElement& element);
void ApplyStrokeStyleTags(SVGLoader& loader, const ShapeElement& element);

}  // namespace tzsvg
