// See the header.
#include "import/TagChain.h"

#include "import/GroupTags.h"
#include "import/PresentationTags.h"
#include "import/PrimitiveTags.h"
#include "import/SVGLoader.h"
#include "svg/RoundTripNames.h"
#include "svg/tree/XmlNode.h"

namespace tzsvg {
namespace {

void writeIdentityTags(SVGLoader& loader, const XmlNode& element) {
    if (element.isShape()) loader.tagLastPolygon(kTagElementId, element.attribute(Attribute::kId));
    loader.tagLastPolygon(kTagTransform, element.attribute(Attribute::kTransform));
}

}  // namespace

bool writeTagChain(SVGLoader& loader, const XmlNode& element, const QGraphicsItem& item) {
    if (!ApplyFillStyleTags(loader, element) || !ApplyStrokeStyleTags(loader, element)) return false;
    if (!writePrimitiveTags(loader, element, item) || !writeGroupTags(loader, element)) return false;
    writeIdentityTags(loader, element);
    return true;
}

}  // namespace tzsvg
