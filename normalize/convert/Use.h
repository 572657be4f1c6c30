// What is drawn somewhere else than it stands, or in a viewport of its own: `use`, symbols, nested `svg`
// elements.
#pragma once

#include "normalize/convert/Conversion.h"

namespace tznormalize {

class OutputElement;

// A `use` element that stands at `place`: a group with a copy of what it refers to.
void convertUse(Conversion& conversion, const SourceElement& use, const Place& place, OutputElement& out,
                Target& target);

// A nested `svg`, or a symbol: its children, fitted into its viewport and clipped to it. The size is that of
// `sized`: the element itself, or the `use` that leads to it.
void convertViewport(Conversion& conversion, const SourceElement& element, const SourceElement& sized,
                     const Place& place, OutputElement& out, Target& target);

}  // namespace tznormalize
