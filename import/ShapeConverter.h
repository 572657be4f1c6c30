// Shape to mesh conversion: from an SVG shape element to one tagged polygon of the loader's mesh. Called by
// the walk. Paths have their own converter, import/PathConverter.h.
#pragma once

namespace tzsvg {

class ShapeElement;
class SVGLoader;

// Each builds the element's shape item, maps its geometry through the element's transform and the y flip,
// adds one polygon and runs the tag chain on it. False, which fails the load, when the mesh is not
// available, the item cannot be built, a transform of the element or an ancestor does not parse, or a
// coordinate is not finite. Failures of the host throw CTzError.
bool convertEllipse(SVGLoader& loader, const ShapeElement& element);  // "circle" and "ellipse"
bool convertRect(SVGLoader& loader, const ShapeElement& element);
bool convertLine(SVGLoader& loader, const ShapeElement& element);
bool convertPolygon(SVGLoader& loader, const ShapeElement& element);
bool convertPolyline(SVGLoader& loader, const ShapeElement& element);

}  // namespace tzsvg
