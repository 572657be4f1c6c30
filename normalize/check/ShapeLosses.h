// What of one shape comes back otherwise: its outline, its paints and its stroke, the values of its style.
#pragma once

#include "normalize/check/LossContext.h"
#include "normalize/geometry/Matrix.h"

namespace tznormalize {

// `style` holds for the shape, `parent` for the element around it; `matrix` is that of all elements around.
void checkShape(const LossContext& context, const SourceElement& shape, const Style& style,
                const Style& parent, const Matrix& matrix);

}  // namespace tznormalize
