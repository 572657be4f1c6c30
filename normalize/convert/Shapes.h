// Shapes: their fill and stroke resolved and written as attributes, in the forms that come back looking the
// same.
#pragma once

#include "normalize/convert/Conversion.h"
#include "normalize/convert/ShapeElements.h"
#include "normalize/write/OutputElement.h"

namespace tznormalize {

// A shape element that stands at `place`, its own transform included.
void convertShape(Conversion& conversion, const SourceElement& shape, const Place& place, OutputElement& out,
                  Target& target);

// An outline (of a letter, say) that stands at `place` and has the fill and stroke of place.style, without
// its effects. `object` is what boxes of its paints are taken of. In a clip path (target.isClip) it is
// written as an area, and when measured not at all.
void drawOutline(Conversion& conversion, const Path& path, const Place& place, const PlacedPaths& object,
                 OutputElement& out, Target& target);

// Appends an element that covers `box` in page space and looks after the extent of what is drawn.
void appendDrawn(Conversion& conversion, WrittenShape shape, OutputElement& out, const Target& target);

}  // namespace tznormalize
