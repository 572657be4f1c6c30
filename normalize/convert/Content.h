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
    OutputElement holder;

    // By how much the content was moved up, a whole number of units: the definition's own transform, view box
    // or reference point moves it down again. The import's flip height counts shapes in definitions, so that
    // none may lie below the page.
    double lift = 0;

    bool isEmpty() const { return holder.children().empty(); }
};

// Converts the children of `definition`. `base` maps their space to the one in which they are written,
// `style` is the definition's own (Cascade::computedFromRoot), `viewport` what percentages in it refer to.
// Marks `definition` as visited meanwhile; the caller has asked mayEnter before.
Content convertContent(Conversion& conversion, const SourceElement& definition, const Matrix& base,
                       const Style& style, const Viewport& viewport, ContentKind kind);

// The lift for something whose lowest point is `bottom`.
double liftFor(const Conversion& conversion, double bottom);

}  // namespace tznormalize
