// Conversion of a "path" element: one Bezier polygon a sub-path. Called by the walk.
#pragma once

namespace tzsvg {

class SVGLoader;
class XmlNode;

// As the converters of import/ShapeConverter.h; `drawingIndex` is the element's index among its siblings,
// stored as `ZORD` on every polygon of the path.
bool convertPath(SVGLoader& loader, const XmlNode& element, unsigned drawingIndex);

}  // namespace tzsvg
