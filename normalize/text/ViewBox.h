// "viewBox" and "preserveAspectRatio".
#pragma once

#include <QStringView>
#include <optional>

#include "normalize/geometry/Matrix.h"

namespace tznormalize {

struct ViewBox {
    double x, y, width, height;
};

// Nothing unless the text is four numbers, width and height above 0.
std::optional<ViewBox> readViewBox(QStringView text);

// The matrix that lays a view box into a viewport of a size at (0, 0). `aspect` is the text of
// "preserveAspectRatio"; empty for the default, "xMidYMid meet".
Matrix fitViewBox(const ViewBox& box, QStringView aspect, double width, double height);

}  // namespace tznormalize
