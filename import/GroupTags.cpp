// See the header.
#include "import/GroupTags.h"

#include "import/SVGLoader.h"
#include "svg/RoundTripNames.h"
#include "svg/tree/XmlNode.h"

namespace tzsvg {

bool writeGroupTags(SVGLoader& loader, const XmlNode& node) {
    if (!node.isShape()) return false;
    if (!node.parent()) return false;
    const GroupTexts* const texts = loader.groups().textsOf(*node.parent());
    if (!texts) return true;
    loader.tagLastPolygon(kTagParentGroup, texts->number);
    loader.tagLastPolygon(kTagGroupName, texts->name);
    loader.tagLastPolygon(kTagGroupChain, texts->chain);
    loader.tagLastPolygon(kTagPick, texts->chain);
    return true;
}

}  // namespace tzsvg
