// Codes for the names of elements and attributes that the import looks for and the export writes. While a
// document is read each of its names is looked up once; from then on codes are compared, not texts.
#pragma once

#include <QString>
#include <QStringView>
#include <cstddef>
#include <cstdint>

namespace tzsvg {

enum class Element : uint8_t {
    kOther,
    kSvg,
    kSwitch,
    kGroup,
    kDefinitions,
    kPattern,
    kLinearGradient,
    kRadialGradient,
    kClipPath,
    kPrivateData,
    // The shapes, which stand last.
    kCircle,
    kEllipse,
    kLine,
    kPath,
    kPolygon,
    kPolyline,
    kRect,
};

enum class Attribute : uint8_t {
    kX,
    kY,
    kWidth,
    kHeight,
    kRx,
    kRy,
    kCx,
    kCy,
    kR,
    kX1,
    kY1,
    kX2,
    kY2,
    kPoints,
    kData,
    kTransform,
    kId,
    kStyle,
    kFill,
    kFillOpacity,
    kFillRule,
    kOpacity,
    kStrokeWidth,
    kStroke,
    kStrokeOpacity,
    kDashArray,
    kDashOffset,
    kLineCap,
    kLineJoin,
    kMiterLimit,
    kClipPath,
    kViewBox,
    kOther,
};

// kOther for names that are none of these. Letter case counts.
Element elementNamed(QStringView name);
Attribute attributeNamed(QStringView name);

// The name itself; not of kOther.
const QString& nameOf(Element element);
const QString& nameOf(Attribute attribute);

constexpr size_t kAttributeCount = static_cast<size_t>(Attribute::kOther);

inline bool isShape(Element name) {
    return name >= Element::kCircle;
}

// What these hold is kept as text by the package, and never becomes geometry.
inline bool isContainerOfDefinitions(Element name) {
    return name == Element::kDefinitions || name == Element::kClipPath || name == Element::kPattern;
}

}  // namespace tzsvg
