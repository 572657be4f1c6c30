#include "normalize/style/Property.h"

#include <iterator>

namespace tznormalize {
namespace {

// In the order of Property.
constexpr QStringView kInitialValues[] = {
    u"#000000",    // fill
    u"1",          // fill-opacity
    u"nonzero",    // fill-rule
    u"none",       // stroke
    u"1",          // stroke-opacity
    u"1",          // stroke-width
    u"butt",       // stroke-linecap
    u"miter",      // stroke-linejoin
    u"4",          // stroke-miterlimit
    u"none",       // stroke-dasharray
    u"0",          // stroke-dashoffset
    u"#000000",    // color
    u"visible",    // visibility
    u"nonzero",    // clip-rule
    u"none",       // marker-start
    u"none",       // marker-mid
    u"none",       // marker-end
    u"normal",     // paint-order
    u"12",         // font-size: Style::fontSize() has it computed
    u"",           // font-family
    u"normal",     // font-weight
    u"normal",     // font-style
    u"normal",     // font-variant
    u"normal",     // font-stretch
    u"start",      // text-anchor
    u"normal",     // letter-spacing
    u"normal",     // word-spacing
    u"lr-tb",      // writing-mode
    u"ltr",        // direction
    u"auto",       // dominant-baseline
    u"normal",     // white-space
    u"auto",       // image-rendering
    u"sRGB",       // color-interpolation
    u"linearRGB",  // color-interpolation-filters
    u"1",          // opacity
    u"none",       // clip-path
    u"none",       // mask
    u"none",       // filter
    u"inline",     // display
    u"",           // overflow: it depends on the element
    u"#000000",    // stop-color
    u"1",          // stop-opacity
    u"normal",     // mix-blend-mode
    u"auto",       // isolation
    u"none",       // vector-effect
    u"",           // transform
    u"",           // transform-origin
    u"view-box",   // transform-box
    u"#000000",    // flood-color
    u"1",          // flood-opacity
    u"#ffffff",    // lighting-color
    u"auto",       // alignment-baseline
    u"baseline",   // baseline-shift
    u"none",       // text-decoration
    u"luminance",  // mask-type
};
static_assert(std::size(kInitialValues) == kStyleCount, "a value for each property of a style");
static_assert(nameOf(Property::kRy) == Name::kRy && nameOf(Property::kOpacity) == Name::kOpacity &&
              nameOf(Property::kMaskType) == Name::kMaskType);

}  // namespace

QStringView initialValue(Property property) {
    return size_t(property) < kStyleCount ? kInitialValues[size_t(property)] : QStringView();
}

}  // namespace tznormalize
