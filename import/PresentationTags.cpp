// See the header.
#include "import/PresentationTags.h"

#include <QDomElement>
#include <array>

#include "import/SVGLoader.h"
#include "import/text/RoundTripNames.h"
#include "import/text/StyleProperty.h"

namespace tzsvg {
namespace {

struct Property {
    QString name;
    TzTagId tag;
};

// In the order in which the tags are written. The values are all gathered before the first is written, so the
// order of looking them up shows nowhere.
const std::array<Property, 4>& fillProperties() {
    static const std::array<Property, 4> properties = {{
        {QStringLiteral("fill"), kTagFill},
        {QStringLiteral("fill-opacity"), kTagFillOpacity},
        {QStringLiteral("fill-rule"), kTagFillRule},
        {QStringLiteral("opacity"), kTagOpacity},
    }};
    return properties;
}

const std::array<Property, 9>& strokeProperties() {
    static const std::array<Property, 9> properties = {{
        {QStringLiteral("stroke-width"), kTagStrokeWidth},
        {QStringLiteral("stroke"), kTagStroke},
        {QStringLiteral("stroke-opacity"), kTagStrokeOpacity},
        {QStringLiteral("stroke-dasharray"), kTagDashArray},
        {QStringLiteral("stroke-dashoffset"), kTagDashOffset},
        {QStringLiteral("stroke-linecap"), kTagLineCap},
        {QStringLiteral("stroke-linejoin"), kTagLineJoin},
        {QStringLiteral("stroke-miterlimit"), kTagMiterLimit},
        {QStringLiteral("clip-path"), kTagClipPath},
    }};
    return properties;
}

QString styleOf(const QDomElement& element) {
    static const QString kStyle = QStringLiteral("style");
    return element.attribute(kStyle);
}

template <size_t size>
void writeGroup(SVGLoader& loader, const QDomElement& element, const QString& style,
                const std::array<Property, size>& properties) {
    for (const Property& property : properties) {
        QString value;
        if (!style.isEmpty()) GetStyleProperty(style, property.name, value);
        if (value.isEmpty()) value = element.attribute(property.name);
        if (!value.isEmpty()) loader.tagLastPolygon(property.tag, value.toStdString());
    }
}

}  // namespace

bool ApplyFillStyleTags(SVGLoader& loader, const QDomNode& node) {
    if (!node.isElement()) return false;
    const QDomElement element = node.toElement();
    const QString style = styleOf(element);
    writeGroup(loader, element, style, fillProperties());
    loader.tagLastPolygon(kTagStyle, style.toStdString());
    return true;
}

bool ApplyStrokeStyleTags(SVGLoader& loader, const QDomNode& node) {
    if (!node.isElement()) return false;
    const QDomElement element = node.toElement();
    writeGroup(loader, element, styleOf(element), strokeProperties());
    return true;
}

}  // namespace tzsvg
