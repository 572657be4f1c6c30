// The primitives of a filter, with their lengths in the page's units.
#pragma once

#include <optional>

#include "normalize/convert/Conversion.h"
#include "normalize/write/OutputElement.h"

namespace tznormalize {

// Where a filter is applied.
struct FilterUse {
    const Place& place;  // of the object
    std::optional<Box>
        unit;  // the object's box, where the primitives' lengths are shares of it (primitiveUnits)
};

// Appends what an element of a filter becomes, with its children. `parent` is the style of the element around
// it. Elements that no renderer knows are left out with a note.
void appendPrimitive(Conversion& conversion, const SourceElement& primitive, const Style& parent,
                     const FilterUse& use, OutputElement& out);

}  // namespace tznormalize
