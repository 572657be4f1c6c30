// See the header.
#include "import/GroupTags.h"

#include "import/SVGLoader.h"
#include "import/shape/ShapeItem.h"
#include "import/text/RoundTripNames.h"

namespace tzsvg {

bool writeGroupTags(SVGLoader& loader, const QDomNode& node) {
    if (!isShapeElement(node)) return false;
    const QDomNode parent = node.parentNode();
    if (parent.isNull()) return false;
    const GroupTexts* const texts = loader.groups().textsOf(parent);
    if (!texts) return true;
    loader.tagLastPolygon(kTagParentGroup, texts->number);
    loader.tagLastPolygon(kTagGroupName, texts->name);
    loader.tagLastPolygon(kTagGroupChain, texts->chain);
    loader.tagLastPolygon(kTagPick, texts->chain);
    return true;
}

}  // namespace tzsvg
