// Puts the points of one polygon, in an element's user coordinates, into the loader's mesh in scene
// coordinates. Used by the converters.
#pragma once

#include <QPointF>
#include <QTransform>
#include <vector>

#include "hostsdk/TzTypes.h"

namespace tzsvg {

class SVGLoader;
class XmlNode;

// The transform from an element's user coordinates to the scene: the element's own transform with its
// ancestors', then the y flip. False when one of them does not parse.
bool sceneTransform(SVGLoader& loader, const XmlNode& element, QTransform& transform);

enum class Closing {
    kOpen,         // one vertex a point
    kFirstVertex,  // and a last vertex on the first point, which is shared, not added twice
};

// Adds the points, mapped, and a polygon over them, and makes it the loader's last polygon. False, with
// nothing added, when a mapped coordinate is not finite.
bool addPolygon(SVGLoader& loader, TzTagId type, const QTransform& transform,
                const std::vector<QPointF>& points, Closing closing);

}  // namespace tzsvg
