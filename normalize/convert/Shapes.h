// Shapes: their fill and stroke resolved and written as attributes, in the forms that come back looking the
// same.
#pragma once

#include "normalize/convert/Conversion.h"
#include "normalize/write/OutputElement.h"

namespace tznormalize {

// A shape element that stands at `place`, its own transform included.
void convertShape(Conversion& conversion, const SourceElement& shape, const Place& place, OutputElement& out,
                  Target& target);

// An outline (of a letter, say) that stands at `place` and has the fill and stroke of place.style, without
// its effects. `object` is what boxes of its paints are taken of. In a clip path (target.isClip) it is
// written as an area.
void drawOutline(Conversion& conversion, const Path& path, const Place& place, const PlacedPaths& object,
                 OutputElement& out, Target& target);

// The attributes of what has no visible stroke. "none" would come back as black.
void setInvisibleStroke(OutputElement& element);

// An outline of straight lines that closes; `path` is in the space of the result. Nothing is resolved for it.
OutputElement polygonElement(const Conversion& conversion, const Path& path);

// Tells that something is drawn with these control points, in page space.
void growDrawn(Conversion& conversion, const Path& path, const Target& target);

}  // namespace tznormalize
