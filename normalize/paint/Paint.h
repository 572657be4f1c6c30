// Values of `fill` and `stroke`: colours, and references to gradients and patterns with their fallbacks.
#pragma once

#include <QStringView>
#include <string>

namespace tznormalize {

struct Conversion;
struct Place;
class PlacedPaths;

// As it is written: "none", "#rrggbb" or "url(#…)", and the opacity that a colour brings along (1 for
// references).
struct Paint {
    std::string value = "none";
    double opacity = 1;

    bool isNone() const { return value == "none"; }
    bool isReference() const { return value.compare(0, 4, "url(") == 0; }
};

// Resolves a paint for a shape that stands at `place`. What it refers to is written into the definitions, in
// the page's units and with `place.ctm` baked in; equal references share one definition. `shape` is measured
// only where the units ask for its box. A reference that leads nowhere, or to what paints nothing, takes its
// fallback, else "none".
Paint resolvePaint(Conversion& conversion, QStringView value, const Place& place, const PlacedPaths& shape);

}  // namespace tznormalize
