// Conversion of a "path" element: one Bezier polygon a sub-path. Called by the walk.
#pragma once

#include <QDomElement>

namespace tzsvg {

class SVGLoader;

// As the converters of import/ShapeConverter.h; `drawingIndex` is the element's index among its siblings,
// stored as `ZORD` on every polygon of the path.
bool convertPath(SVGLoader& loader, const QDomElement& element, unsigned drawingIndex);

}  // namespace tzsvg
