// The outline of a shape as the import reads it, beside what it is meant to be.
#pragma once

#include "normalize/check/LossContext.h"
#include "normalize/geometry/Path.h"
#include "svg/tree/XmlNode.h"

namespace tznormalize {

// Adds what is read otherwise than it is meant: numbers, lengths, the transform. `outline` is what is meant.
void checkOutline(const LossContext& context, const SourceElement& shape, const Style& style,
                  const Path& outline);

// Whether the last sub-path of a path ends at its first point, as the import has it.
bool endsWhereItBegan(const tzsvg::XmlNode& path);

}  // namespace tznormalize
