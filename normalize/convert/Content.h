// What a definition holds (a pattern's tile, a clip path's areas, a mask, a marker), converted in its own
// space.
#pragma once

#include "normalize/convert/Conversion.h"
#include "normalize/write/OutputElement.h"

namespace tznormalize {

enum class ContentKind { kDrawing, kClip };

struct Content {
    // Its children are the content: shapes, and `use` links to groups that stand directly in the definitions.
    // The import refuses a group in a mask or marker, and the export one within a group of the definitions.
    OutputElement holder{"g"};

    // By how much the content was moved up, a whole number of units: the definition's own transform, view box
    // or reference point moves it down again.
    double lift = 0.0;

    bool isEmpty() const { return holder.children().empty(); }
};

// Converts the children of `definition`. `base` maps their space to the one in which they are written,
// `style` is the definition's own (Cascade::computedFromRoot), `viewport` what percentages in it refer to.
// Marks `definition` as visited meanwhile; the caller has asked mayEnter before.
Content convertContent(Conversion& conversion, const SourceElement& definition, const Matrix& base,
                       const Style& style, const Viewport& viewport, ContentKind kind);

// The box of all control points of what convertContent would write without a lift; nothing when that is
// nothing.
std::optional<Box> measureContent(Conversion& conversion, const SourceElement& definition, const Matrix& base,
                                  const Style& style, const Viewport& viewport, ContentKind kind);

// The lift for something of a definition whose lowest point is `bottom`: a whole number of units.
// [trap: the import's flip height counts shapes in definitions as well, the export's does not]
double liftFor(const Conversion& conversion, double bottom);

}  // namespace tznormalize
