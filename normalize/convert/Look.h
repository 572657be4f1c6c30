// How a shape looks: fill and stroke with all that they inherit, resolved.
#pragma once

#include "normalize/convert/Conversion.h"
#include "normalize/geometry/StrokeOutline.h"
#include "normalize/paint/Paint.h"

namespace tznormalize {

struct Look {
    Paint fill;  // "none" when nothing of it can be seen, as `stroke`
    Paint stroke;
    double fillOpacity = 1.0;  // the colour's own times "fill-opacity"
    double strokeOpacity = 1.0;
    bool isEvenOdd = false;
    bool isStrokeFirst = false;  // "paint-order"
    StrokeForm form;             // in the shape's own space, of the stroke if there is one
    double scale = 1.0;          // from there to the page, for widths and dashes

    bool isVisible() const { return !fill.isNone() || !stroke.isNone(); }

    // Whether the stroke has to be written as an area: a stroke's paint that is no colour comes back black,
    // and no single width says what an uneven scale makes of it.
    bool isStrokeOutlined = false;

    // Whether it had so many dashes that no image would take it, and has none now.
    bool isDashless = false;

    // How far the stroke reaches over the outline, on the page.
    double reach = 0.0;
};

// `path` stands at `place`; `object` is what its paints are fitted to.
Look resolveLook(Conversion& conversion, const Path& path, const Place& place, const PlacedPaths& object);

// Whether resolveLook may find anything visible, told without resolving references: for measuring.
bool mayBeSeen(const Path& path, const Place& place);

// The lengths of dashes and gaps in turn; empty for no dashes, and for lists that are none: with a negative
// number, or all 0.
std::vector<double> dashLengths(const Place& place);

bool isHidden(const Style& style);  // "visibility"

// The width of its stroke, in the shape's own space.
double strokeWidth(const Conversion& conversion, const Place& place);

}  // namespace tznormalize
