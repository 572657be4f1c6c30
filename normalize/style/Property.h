// The CSS properties that drawing needs.
#pragma once

#include <QStringView>
#include <cstdint>
#include <optional>

#include "normalize/document/Names.h"

namespace tznormalize {

// Inherited ones first. The order is that of Name, which has the same names at its start.
enum class Property : uint8_t {
    kFill,
    kFillOpacity,
    kFillRule,
    kStroke,
    kStrokeOpacity,
    kStrokeWidth,
    kStrokeLinecap,
    kStrokeLinejoin,
    kStrokeMiterlimit,
    kStrokeDasharray,
    kStrokeDashoffset,
    kColor,
    kVisibility,
    kClipRule,
    kMarkerStart,
    kMarkerMid,
    kMarkerEnd,
    kPaintOrder,
    kFontSize,
    kFontFamily,
    kFontWeight,
    kFontStyle,
    kFontVariant,
    kFontStretch,
    kTextAnchor,
    kLetterSpacing,
    kWordSpacing,
    kWritingMode,
    kDirection,
    kDominantBaseline,
    kWhiteSpace,
    kImageRendering,
    kColorInterpolation,
    kColorInterpolationFilters,
    // Each element's own.
    kOpacity,
    kClipPath,
    kMask,
    kFilter,
    kDisplay,
    kOverflow,
    kStopColor,
    kStopOpacity,
    kMixBlendMode,
    kIsolation,
    kVectorEffect,
    kTransform,
    kTransformOrigin,
    kTransformBox,
    kFloodColor,
    kFloodOpacity,
    kLightingColor,
    kAlignmentBaseline,
    kBaselineShift,
    kTextDecoration,
    kMaskType,
    // Geometry, which sheets may set as well: Cascade::geometryValue.
    kX,
    kY,
    kWidth,
    kHeight,
    kCx,
    kCy,
    kR,
    kRx,
    kRy,
};

constexpr size_t kInheritedCount = size_t(Property::kColorInterpolationFilters) + 1;
constexpr size_t kStyleCount = size_t(Property::kMaskType) + 1;  // those that a Style holds
constexpr size_t kPropertyCount = size_t(Property::kRy) + 1;

constexpr bool isInherited(Property property) {
    return size_t(property) < kInheritedCount;
}

// The name of the attribute that sets the property.
constexpr Name nameOf(Property property) {
    return Name(property);
}

// The property that an attribute sets.
constexpr std::optional<Property> propertyOf(Name name) {
    if (size_t(name) < kPropertyCount) return Property(name);
    return std::nullopt;
}

// What any property may be declared to be.
constexpr QStringView kInherit = u"inherit";
constexpr QStringView kInitial = u"initial";
constexpr QStringView kUnset = u"unset";

// The value where nothing is declared or inherited. Empty for geometry and for those that have none.
QStringView initialValue(Property property);

}  // namespace tznormalize
