// The reader of "transform", "gradientTransform" and "patternTransform", as attribute and in style sheets.
#pragma once

#include <QStringView>
#include <optional>

#include "normalize/geometry/Matrix.h"

namespace tznormalize {

// Reads a list of transform functions; the right-most is applied to points first. Angles may have units (deg,
// rad, grad, turn), distances px. Empty text and "none" are the identity. Nothing at the first thing that
// does not fit: a faulty list counts as not given.
std::optional<Matrix> readTransform(QStringView text);

}  // namespace tznormalize
