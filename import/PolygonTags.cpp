// Every value is kept as found: nothing is parsed, converted or inherited, and an empty one sets no tag.
#include "import/PolygonTags.h"

#include "import/PrimitiveText.h"
#include "import/SVGLoader.h"
#include "svg/RoundTripNames.h"
#include "svg/text/StyleProperty.h"
#include "svg/tree/XmlNode.h"

namespace tzsvg {
namespace {

void writeStyled(SVGLoader& loader, const XmlNode& element, const StyleProperties& style, TagGroup group) {
    for (const AttributeTag& row : kAttributeTags) {
        if (row.group != group) continue;
        const QStringView value = style.value(nameOf(row.attribute));
        loader.tagLastPolygon(row.tag, value.isEmpty() ? element.attribute(row.attribute) : value);
    }
}

bool ApplyFillStyleTags(SVGLoader& loader, const XmlNode& element, const StyleProperties& style) {
    if (!element.isElement()) return false;
    writeStyled(loader, element, style, TagGroup::kFill);
    loader.tagLastPolygon(kTagStyle, element.attribute(Attribute::kStyle));
    return true;
}

bool ApplyStrokeStyleTags(SVGLoader& loader, const XmlNode& element, const StyleProperties& style) {
    if (!element.isElement()) return false;
    writeStyled(loader, element, style, TagGroup::kStroke);
    return true;
}

// False for an element that is no shape, or an item of another kind.
bool writePrimitiveTags(SVGLoader& loader, const XmlNode& element, const QGraphicsItem& item) {
    const std::string text = primitiveText(element, item);
    if (text.empty()) return false;
    loader.tagLastPolygon(kTagPrimitive, text);
    loader.tagLastPolygon(kTagViewBoxCompare, "1");
    return true;
}

// True without tags when the parent is no numbered group; false for a node that is no shape or has no parent.
bool writeGroupTags(SVGLoader& loader, const XmlNode& element) {
    if (!element.isShape() || !element.parent()) return false;
    const GroupTexts* const texts = loader.groups().textsOf(*element.parent());
    if (!texts) return true;
    loader.tagLastPolygon(kTagParentGroup, texts->number);
    loader.tagLastPolygon(kTagGroupName, texts->name);
    loader.tagLastPolygon(kTagGroupChain, texts->chain);
    loader.tagLastPolygon(kTagPick, texts->chain);
    return true;
}

void writeIdentityTags(SVGLoader& loader, const XmlNode& element) {
    if (element.isShape()) loader.tagLastPolygon(kTagElementId, element.attribute(Attribute::kId));
    loader.tagLastPolygon(kTagTransform, element.attribute(Attribute::kTransform));
}

}  // namespace

bool writePolygonTags(SVGLoader& loader, const XmlNode& element, const QGraphicsItem& item) {
    const StyleProperties style(element.attribute(Attribute::kStyle));
    if (!ApplyFillStyleTags(loader, element, style) || !ApplyStrokeStyleTags(loader, element, style) ||
        !writePrimitiveTags(loader, element, item) || !writeGroupTags(loader, element))
        return false;
    writeIdentityTags(loader, element);
    return true;
}

}  // namespace tzsvg
