// The chain of tags that every polygon gets right after it was made. Called by the converters.
#pragma once

#include <QGraphicsItem>

namespace tzsvg {

class SVGLoader;
class XmlNode;

// Tags the loader's last polygon: fill, stroke, primitive, groups, then `ELID` and `TRAN`. The first step
// that answers false ends the chain, and is the answer.
bool writeTagChain(SVGLoader& loader, const XmlNode& element, const QGraphicsItem& item);

}  // namespace tzsvg
