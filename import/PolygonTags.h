// The tags of a polygon: what the element it was made of says beside its outline. Written by the converters
// right behind the polygon.
#pragma once

#include <QGraphicsItem>

namespace tzsvg {

class SVGLoader;
class XmlNode;

// Tags the loader's last polygon: fill, stroke, primitive, groups, then `ELID` and `TRAN`. The first step
// that answers false ends the chain, and is the answer.
bool writePolygonTags(SVGLoader& loader, const XmlNode& element, const QGraphicsItem& item);

}  // namespace tzsvg
