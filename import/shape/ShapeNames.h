// The names of the seven shape elements, built once. Used where elements are dispatched by name.
#pragma once

#include <QString>

namespace tzsvg {

struct ShapeNames {
    const QString circle = QStringLiteral("circle");
    const QString ellipse = QStringLiteral("ellipse");
    const QString line = QStringLiteral("line");
    const QString path = QStringLiteral("path");
    const QString polygon = QStringLiteral("polygon");
    const QString polyline = QStringLiteral("polyline");
    const QString rect = QStringLiteral("rect");
};

inline const ShapeNames& shapeNames() {
    static const ShapeNames names;
    return names;
}

}  // namespace tzsvg
