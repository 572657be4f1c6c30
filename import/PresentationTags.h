// Presentation tags: a shape's own fill and stroke properties, as text on its polygon. Called by the tag
// chain.
#pragma once

namespace tzsvg {

class SVGLoader;
class XmlNode;

// Each gathers its group of properties, from "style" first and the presentation attribute where that gives
// nothing, and stores every value that is not empty, as found: nothing is parsed, converted or inherited. The
// fill group also stores the whole "style". False, with nothing stored, for a node that is no element.
bool ApplyFillStyleTags(SVGLoader& loader, const XmlNode& element);
bool ApplyStrokeStyleTags(SVGLoader& loader, const XmlNode& element);

}  // namespace tzsvg
