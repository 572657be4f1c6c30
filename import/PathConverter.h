// Conversion of a "path" element: one Bezier polygon a sub-path. Called by the walk.
#pragma once

namespace tzsvg {

class ShapeElement;
class SVGLoader;

// As the converters of import/ShapeConverter.h; `drawingIndex` is the element's index among its siblings,
// stored as `ZORD` on every polygon of the path.
bool convertPath(SVGLoader& loader, const ShapeElement& element, unsigned drawingIndex);

}  // namespace tzsvg
