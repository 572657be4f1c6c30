// See the header. Called by SVGSaver::addElement(), once for each element.
#include "export/StyleAttributes.h"

#include <QDomDocument>
#include <QDomElement>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>

#include "export/SVGSaver.h"
#include "import/text/RoundTripNames.h"
#include "import/text/ScanText.h"

namespace tzsvg {
namespace {

struct Row {
    TzTagId tag;
    QString attribute;
};

// In ascending order of the IDs, in which they are written. `STYL` has no row: it is never exported.
const std::array<Row, 15>& styleRows() {
    static const std::array<Row, 15> kRows = {{
        {kTagClipPath, QStringLiteral("clip-path")},
        {kTagDashArray, QStringLiteral("stroke-dasharray")},
        {kTagDashOffset, QStringLiteral("stroke-dashoffset")},
        {kTagElementId, QStringLiteral("id")},
        {kTagFill, QStringLiteral("fill")},
        {kTagFillOpacity, QStringLiteral("fill-opacity")},
        {kTagFillRule, QStringLiteral("fill-rule")},
        {kTagStrokeOpacity, QStringLiteral("stroke-opacity")},
        {kTagLineCap, QStringLiteral("stroke-linecap")},
        {kTagStroke, QStringLiteral("stroke")},
        {kTagLineJoin, QStringLiteral("stroke-linejoin")},
        {kTagStrokeWidth, QStringLiteral("stroke-width")},
        {kTagMiterLimit, QStringLiteral("stroke-miterlimit")},
        {kTagOpacity, QStringLiteral("opacity")},
        {kTagTransform, QStringLiteral("transform")},
    }};
    return kRows;
}

// The attribute's text for an absent tag; empty for none.
QString defaultText(const SVGSaver& saver, TzTagId tag) {
    switch (tag) {
        case kTagStrokeWidth:
            return saver.strokeWidth();
        case kTagStrokeOpacity:
            return QStringLiteral("1.0");
        case kTagStroke:
            return QStringLiteral("#000000");
        case kTagFill: {
            const std::vector<uint32_t>& vertices = saver.polygonVertices();
            const bool closed = !vertices.empty() && vertices.front() == vertices.back();
            return closed ? QString() : QStringLiteral("none");
        }
        default:
            return {};
    }
}

// Truncated, not clamped to a byte; kept inside 32 bits, where the result would otherwise be undefined.
unsigned colourComponent(float value) {
    const double scaled = static_cast<double>(value) * 255.0;
    constexpr double kLowest = std::numeric_limits<int32_t>::min();
    constexpr double kLargest = std::numeric_limits<int32_t>::max();
    const auto whole = std::isnan(scaled) ? 0 : static_cast<int32_t>(std::clamp(scaled, kLowest, kLargest));
    return static_cast<unsigned>(whole);
}

}  // namespace

QString strokeColour(const std::string& text) {
    float red = 0.0F;
    float green = 0.0F;
    float blue = 0.0F;
    scanText(text.c_str(), "rgb: %f %f %f", &red, &green, &blue);
    std::array<char, 32> colour{};
    const int size = std::snprintf(colour.data(), colour.size(), "#%02x%02x%02x", colourComponent(red),
                                   colourComponent(green), colourComponent(blue));
    return QString::fromLatin1(colour.data(), size);
}

QString defaultStrokeWidth(double largestExtent) {
    const QString name = QStringLiteral("stroke-width");
    QDomElement element = QDomDocument().createElement(name);
    element.setAttribute(name, 0.0025 * largestExtent);
    return element.attribute(name);
}

void WriteStyleAttributes(SVGSaver& saver, QDomElement element) {
    for (const Row& row : styleRows()) {
        const std::string* const text = saver.polygonTag(row.tag);
        QString value;
        if (!text) {
            value = defaultText(saver, row.tag);
        } else if (row.tag == kTagStroke && !text->empty() && text->front() != '#') {
            value = strokeColour(*text);
        } else {
            value = QString::fromStdString(*text);
        }
        if (!value.isEmpty()) element.setAttribute(row.attribute, value);
    }
}

}  // namespace tzsvg
