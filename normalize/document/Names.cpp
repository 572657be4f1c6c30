#include "normalize/document/Names.h"

#include <QHash>
#include <array>

namespace tznormalize {
namespace {

struct TagText {
    QStringView text;
    Tag tag;
};

constexpr TagText kTags[] = {
    {u"a", Tag::kA},
    {u"circle", Tag::kCircle},
    {u"clipPath", Tag::kClipPath},
    {u"defs", Tag::kDefs},
    {u"desc", Tag::kDesc},
    {u"ellipse", Tag::kEllipse},
    {u"filter", Tag::kFilter},
    {u"flowRoot", Tag::kFlowRoot},
    {u"foreignObject", Tag::kForeignObject},
    {u"g", Tag::kG},
    {u"image", Tag::kImage},
    {u"line", Tag::kLine},
    {u"linearGradient", Tag::kLinearGradient},
    {u"marker", Tag::kMarker},
    {u"mask", Tag::kMask},
    {u"metadata", Tag::kMetadata},
    {u"path", Tag::kPath},
    {u"pattern", Tag::kPattern},
    {u"polygon", Tag::kPolygon},
    {u"polyline", Tag::kPolyline},
    {u"radialGradient", Tag::kRadialGradient},
    {u"rect", Tag::kRect},
    {u"script", Tag::kScript},
    {u"stop", Tag::kStop},
    {u"style", Tag::kStyle},
    {u"svg", Tag::kSvg},
    {u"switch", Tag::kSwitch},
    {u"symbol", Tag::kSymbol},
    {u"text", Tag::kText},
    {u"textPath", Tag::kTextPath},
    {u"title", Tag::kTitle},
    {u"tref", Tag::kTref},
    {u"tspan", Tag::kTspan},
    {u"use", Tag::kUse},
};

// In the order of Name.
constexpr QStringView kNames[] = {
    u"fill",
    u"fill-opacity",
    u"fill-rule",
    u"stroke",
    u"stroke-opacity",
    u"stroke-width",
    u"stroke-linecap",
    u"stroke-linejoin",
    u"stroke-miterlimit",
    u"stroke-dasharray",
    u"stroke-dashoffset",
    u"color",
    u"visibility",
    u"clip-rule",
    u"marker-start",
    u"marker-mid",
    u"marker-end",
    u"paint-order",
    u"font-size",
    u"font-family",
    u"font-weight",
    u"font-style",
    u"font-variant",
    u"font-stretch",
    u"text-anchor",
    u"letter-spacing",
    u"word-spacing",
    u"writing-mode",
    u"direction",
    u"dominant-baseline",
    u"white-space",
    u"image-rendering",
    u"color-interpolation",
    u"color-interpolation-filters",
    u"opacity",
    u"clip-path",
    u"mask",
    u"filter",
    u"display",
    u"overflow",
    u"stop-color",
    u"stop-opacity",
    u"mix-blend-mode",
    u"isolation",
    u"vector-effect",
    u"transform",
    u"transform-origin",
    u"transform-box",
    u"flood-color",
    u"flood-opacity",
    u"lighting-color",
    u"alignment-baseline",
    u"baseline-shift",
    u"text-decoration",
    u"mask-type",
    u"x",
    u"y",
    u"width",
    u"height",
    u"cx",
    u"cy",
    u"r",
    u"rx",
    u"ry",
    u"id",
    u"class",
    u"style",
    u"href",
    u"xlink:href",
    u"xml:space",
    u"xml:lang",
    u"xml:base",
    u"d",
    u"points",
    u"x1",
    u"y1",
    u"x2",
    u"y2",
    u"dx",
    u"dy",
    u"rotate",
    u"fx",
    u"fy",
    u"fr",
    u"offset",
    u"viewBox",
    u"preserveAspectRatio",
    u"pathLength",
    u"gradientUnits",
    u"gradientTransform",
    u"spreadMethod",
    u"patternUnits",
    u"patternContentUnits",
    u"patternTransform",
    u"clipPathUnits",
    u"maskUnits",
    u"maskContentUnits",
    u"markerUnits",
    u"markerWidth",
    u"markerHeight",
    u"refX",
    u"refY",
    u"orient",
    u"filterUnits",
    u"primitiveUnits",
    u"stdDeviation",
    u"radius",
    u"kernelUnitLength",
    u"baseFrequency",
    u"surfaceScale",
    u"scale",
    u"z",
    u"pointsAtX",
    u"pointsAtY",
    u"pointsAtZ",
    u"textLength",
    u"lengthAdjust",
    u"startOffset",
    u"requiredExtensions",
    u"requiredFeatures",
    u"systemLanguage",
    u"type",
    u"media",
    u"version",
};

constexpr size_t kNameCount = std::size(kNames);
static_assert(kNameCount == size_t(Name::kOther), "a text for each name");
static_assert(kNames[size_t(Name::kRy)].size() == 2 && kNames[size_t(Name::kId)].size() == 2);

}  // namespace

Tag tagOf(QStringView localName) {
    static const auto kByText = [] {
        QHash<QStringView, Tag> tags;
        for (const TagText& one : kTags) tags.insert(one.text, one.tag);
        return tags;
    }();
    if (localName.startsWith(u"fe")) return Tag::kFilterPrimitive;
    return kByText.value(localName, Tag::kOther);
}

bool isShape(Tag tag) {
    switch (tag) {
        case Tag::kCircle:
        case Tag::kEllipse:
        case Tag::kLine:
        case Tag::kPath:
        case Tag::kPolygon:
        case Tag::kPolyline:
        case Tag::kRect:
            return true;
        default:
            return false;
    }
}

Name nameOf(QStringView name) {
    static const auto kByText = [] {
        QHash<QStringView, Name> names;
        for (size_t i = 0; i < kNameCount; ++i) names.insert(kNames[i], Name(i));
        return names;
    }();
    return kByText.value(name, Name::kOther);
}

QStringView textOf(Name name) {
    return name == Name::kOther ? QStringView() : kNames[size_t(name)];
}

}  // namespace tznormalize
