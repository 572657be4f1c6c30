// The walk over the source document: what is drawn, in order, with references followed.
#pragma once

#include "normalize/convert/Conversion.h"

namespace tznormalize {

class OutputElement;

// Converts one element that stands in `parent` (its own transform and style not yet applied) and appends to
// `out` what shows it. Elements that draw nothing (definitions, descriptions, other namespaces) append
// nothing.
void convertElement(Conversion& conversion, const SourceElement& element, const Place& parent,
                    OutputElement& out, Target& target);

// The children of an element that stands at `place`.
void convertChildren(Conversion& conversion, const SourceElement& element, const Place& place,
                     OutputElement& out, Target& target);

// The place of a child of what stands at `parent`: its style computed, its transform applied.
Place placeOf(const Conversion& conversion, const SourceElement& element, const Place& parent);

// The matrix of "transform", by attribute or style sheet; the identity for one that cannot be read.
Matrix ownTransform(const Style& style);

}  // namespace tznormalize
