#include "normalize/geometry/ShapeOutline.h"

#include <algorithm>

#include "normalize/document/SourceElement.h"
#include "normalize/geometry/Arc.h"
#include "normalize/style/Cascade.h"
#include "normalize/text/PathData.h"

namespace tznormalize {
namespace {

// The lengths of one element.
class Lengths {
  public:
    Lengths(const SourceElement& element, const Cascade& cascade, const Viewport& viewport, double fontSize)
        : element_(element), cascade_(cascade), viewport_(viewport), fontSize_(fontSize) {}

    std::optional<double> optional(Name name, Axis axis) const {
        return readLength(cascade_.geometryValue(element_, name), axis, viewport_, fontSize_);
    }
    double operator()(Name name, Axis axis) const { return optional(name, axis).value_or(0.0); }

    // Of x1, y1 and the like, which style sheets do not set.
    double attribute(Name name, Axis axis) const {
        return readLength(element_.attribute(name), axis, viewport_, fontSize_).value_or(0.0);
    }

    // rx and ry: each takes the other's value when it has none of its own.
    Point radii() const {
        const auto radius = [this](Name name, Axis axis) {
            const std::optional<double> value = optional(name, axis);
            return value && *value >= 0.0 ? value : std::nullopt;
        };
        const std::optional<double> rx = radius(Name::kRx, Axis::kHorizontal);
        const std::optional<double> ry = radius(Name::kRy, Axis::kVertical);
        return {rx.value_or(ry.value_or(0.0)), ry.value_or(rx.value_or(0.0))};
    }

  private:
    const SourceElement& element_;
    const Cascade& cascade_;
    const Viewport& viewport_;
    const double fontSize_;
};

Path rectangle(const Lengths& length) {
    const double x = length(Name::kX, Axis::kHorizontal);
    const double y = length(Name::kY, Axis::kVertical);
    const double width = length(Name::kWidth, Axis::kHorizontal);
    const double height = length(Name::kHeight, Axis::kVertical);
    if (!(width > 0.0 && height > 0.0)) return {};
    const Box box{x, y, x + width, y + height};
    const Point radii = length.radii();
    if (radii.x == 0.0 || radii.y == 0.0) return rectangleOutline(box);
    return roundedRectangleOutline(box, std::min(radii.x, width / 2), std::min(radii.y, height / 2));
}

Path ellipse(const Lengths& length, const Point& radii) {
    if (!(radii.x > 0.0 && radii.y > 0.0)) return {};
    return ellipseOutline({length(Name::kCx, Axis::kHorizontal), length(Name::kCy, Axis::kVertical)}, radii.x,
                          radii.y);
}

Path line(const Lengths& length) {
    Path path;
    path.moveTo(
        {length.attribute(Name::kX1, Axis::kHorizontal), length.attribute(Name::kY1, Axis::kVertical)});
    path.lineTo(
        {length.attribute(Name::kX2, Axis::kHorizontal), length.attribute(Name::kY2, Axis::kVertical)});
    return path;
}

Path outline(const SourceElement& element, const Lengths& length) {
    switch (element.tag()) {
        case Tag::kPath:
            return readPathData(element.attribute(Name::kD));
        case Tag::kRect:
            return rectangle(length);
        case Tag::kCircle: {
            const double r = length(Name::kR, Axis::kNeither);
            return ellipse(length, {r, r});
        }
        case Tag::kEllipse:
            return ellipse(length, length.radii());
        case Tag::kLine:
            return line(length);
        case Tag::kPolyline:
            return polygonOutline(readPoints(element.attribute(Name::kPoints)), false);
        case Tag::kPolygon:
            return polygonOutline(readPoints(element.attribute(Name::kPoints)), true);
        default:
            return {};
    }
}

}  // namespace

Path outlineOf(const SourceElement& element, const Cascade& cascade, const Viewport& viewport,
               double fontSize) {
    Path path = outline(element, Lengths(element, cascade, viewport, fontSize));
    return path.isFinite() ? path : Path();
}

Path rectangleOutline(const Box& box) {
    Path path;
    path.reserve(5, 4);
    path.moveTo({box.left, box.top});
    path.lineTo({box.right, box.top});
    path.lineTo({box.right, box.bottom});
    path.lineTo({box.left, box.bottom});
    path.close();
    return path;
}

Path roundedRectangleOutline(const Box& box, double rx, double ry) {
    const double left = box.left + rx;
    const double right = box.right - rx;
    const double top = box.top + ry;
    const double bottom = box.bottom - ry;
    const double hx = rx * (1 - kQuarterCircle);  // of the handles from the corner
    const double hy = ry * (1 - kQuarterCircle);
    Path path;
    path.moveTo({left, box.top});
    path.lineTo({right, box.top});
    path.curveTo({box.right - hx, box.top}, {box.right, box.top + hy}, {box.right, top});
    path.lineTo({box.right, bottom});
    path.curveTo({box.right, box.bottom - hy}, {box.right - hx, box.bottom}, {right, box.bottom});
    path.lineTo({left, box.bottom});
    path.curveTo({box.left + hx, box.bottom}, {box.left, box.bottom - hy}, {box.left, bottom});
    path.lineTo({box.left, top});
    path.curveTo({box.left, box.top + hy}, {box.left + hx, box.top}, {left, box.top});
    path.close();
    return path;
}

Path ellipseOutline(const Point& centre, double rx, double ry) {
    const auto at = [&](double x, double y) { return Point{centre.x + x * rx, centre.y + y * ry}; };
    constexpr double kHandle = kQuarterCircle;
    Path path;
    path.moveTo(at(1, 0));
    path.curveTo(at(1, kHandle), at(kHandle, 1), at(0, 1));
    path.curveTo(at(-kHandle, 1), at(-1, kHandle), at(-1, 0));
    path.curveTo(at(-1, -kHandle), at(-kHandle, -1), at(0, -1));
    path.curveTo(at(kHandle, -1), at(1, -kHandle), at(1, 0));
    path.close();
    return path;
}

Path polygonOutline(const std::vector<Point>& corners, bool isClosed) {
    Path path;
    if (corners.empty()) return path;
    path.reserve(corners.size() + 1, corners.size());
    path.moveTo(corners.front());
    for (size_t i = 1; i < corners.size(); ++i) path.lineTo(corners[i]);
    if (isClosed) path.close();
    return path;
}

}  // namespace tznormalize
