// Shape to mesh conversion: from an SVG shape element to tagged polygons of the loader's mesh. Called by the
// walk. Paths are converted in import/PathConverter.cpp.
#pragma once

namespace tzsvg {

class SVGLoader;
class XmlNode;

// Each builds the element's shape item, maps its geometry through the element's transform and the y flip,
// adds one polygon and runs the tag chain on it. False, which fails the load, when the mesh is not available,
// the item cannot be built, a transform of the element or an ancestor does not parse, or a coordinate is not
// finite. Failures of the host throw CTzError.
bool convertEllipse(SVGLoader& loader, const XmlNode& element);  // "circle" and "ellipse"
bool convertRect(SVGLoader& loader, const XmlNode& element);
bool convertLine(SVGLoader& loader, const XmlNode& element);
bool convertPolygon(SVGLoader& loader, const XmlNode& element);
bool convertPolyline(SVGLoader& loader, const XmlNode& element);

// One polygon for each sub-path, none for an empty path; `drawingIndex` is the element's index among its
// siblings, stored as `ZORD` on each.
bool convertPath(SVGLoader& loader, const XmlNode& element, unsigned drawingIndex);

}  // namespace tzsvg
