// See the header.
#include "import/PresentationTags.h"

#include <array>

#include "import/SVGLoader.h"
#include "svg/RoundTripNames.h"
#include "svg/text/StyleProperty.h"
#include "svg/tree/XmlNode.h"

namespace tzsvg {
namespace {

struct Property {
    Attribute attribute;
    TzTagId tag;
};

// In the order in which the tags are written. The values are all gathered before the first is written, so the
// order of looking them up shows nowhere.
constexpr std::array<Property, 4> kFillProperties = {{
    {Attribute::kFill, kTagFill},
    {Attribute::kFillOpacity, kTagFillOpacity},
    {Attribute::kFillRule, kTagFillRule},
    {Attribute::kOpacity, kTagOpacity},
}};

constexpr std::array<Property, 9> kStrokeProperties = {{
    {Attribute::kStrokeWidth, kTagStrokeWidth},
    {Attribute::kStroke, kTagStroke},
    {Attribute::kStrokeOpacity, kTagStrokeOpacity},
    {Attribute::kDashArray, kTagDashArray},
    {Attribute::kDashOffset, kTagDashOffset},
    {Attribute::kLineCap, kTagLineCap},
    {Attribute::kLineJoin, kTagLineJoin},
    {Attribute::kMiterLimit, kTagMiterLimit},
    {Attribute::kClipPath, kTagClipPath},
}};

template <size_t size>
void writeGroup(SVGLoader& loader, const XmlNode& element, QStringView style,
                const std::array<Property, size>& properties) {
    const StyleProperties styled(style);
    for (const Property& property : properties) {
        const QStringView value = styled.value(nameOf(property.attribute));
        if (value.isEmpty()) {
            loader.tagLastPolygon(property.tag, element.attribute(property.attribute));
        } else {
            loader.tagLastPolygon(property.tag, value);
        }
    }
}

}  // namespace

bool ApplyFillStyleTags(SVGLoader& loader, const XmlNode& element) {
    if (!element.isElement()) return false;
    const QStringView style = element.attribute(Attribute::kStyle);
    writeGroup(loader, element, style, kFillProperties);
    loader.tagLastPolygon(kTagStyle, style);
    return true;
}

bool ApplyStrokeStyleTags(SVGLoader& loader, const XmlNode& element) {
    if (!element.isElement()) return false;
    writeGroup(loader, element, element.attribute(Attribute::kStyle), kStrokeProperties);
    return true;
}

}  // namespace tzsvg
