// The element that an outline is written as: the kind that comes back looking the same, with all its
// attributes.
#pragma once

#include <optional>

#include "normalize/convert/Look.h"
#include "normalize/write/OutputElement.h"

namespace tznormalize {

struct WrittenShape {
    OutputElement element;
    Box box;  // of its control points as they were rounded
};

// `path` is in page space; `origin` is the element of the source that it comes from, kPath for any outline.
// Fill, and stroke if `isStroked`, are those of `look`. Nothing when nothing is left of it on the grid.
std::optional<WrittenShape> writeShape(const Conversion& conversion, Path path, Tag origin, const Look& look,
                                       const Paint& fill, bool isStroked);

// An area: an outlined stroke, a letter, a part of a clip path. Without any attribute of style.
std::optional<WrittenShape> writeArea(const Grid& grid, const Path& path);

// How long a dot is drawn, in the space of the stroke: enough for renderers, too little for the eye.
double dotLength(const StrokeForm& form);

// The attributes of what has no stroke: none in an image, else those of an invisible one. [trap: "none" would
// come back as black]
void setNoStroke(const Conversion& conversion, OutputElement& element);

}  // namespace tznormalize
