#include "export/ProjectionPlane.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace tzsvg {
namespace {

using Vector = std::array<double, 3>;

// The normal of the plane through the first points that span one.
std::optional<Vector> findNormal(const PointCache& points) {
    if (points.size() < 3) return std::nullopt;
    const QVector3D& p0 = points[0];
    size_t i = 1;
    while (i < points.size() && !((points[i] - p0).length() > 0)) ++i;
    if (i == points.size()) return std::nullopt;
    const QVector3D& p1 = points[i];
    for (++i; i < points.size(); ++i) {
        const QVector3D& p2 = points[i];
        if (!((p2 - p0).length() > 0) || !((p2 - p1).length() > 0)) continue;
        const QVector3D cross = QVector3D::crossProduct(p1 - p0, p2 - p0);
        if (!(cross.length() > 0)) continue;
        // Divided in double precision: Qt's normalized() gives a null vector for short ones, and would refuse
        // drawings in millimetres. Plane/small pins it.
        const auto x = static_cast<double>(cross.x());
        const auto y = static_cast<double>(cross.y());
        const auto z = static_cast<double>(cross.z());
        const double length = std::sqrt(x * x + y * y + z * z);
        return Vector{x / length, y / length, z / length};
    }
    return std::nullopt;
}

bool fuzzyEqual(double a, double b) {
    return std::abs(a - b) <= 1e-5 * std::max(1.0, std::abs(a));
}

bool isAlong(const Vector& normal, const Vector& direction) {
    return std::equal(normal.begin(), normal.end(), direction.begin(), fuzzyEqual);
}

// Truncated on purpose: a fractional flip height is dropped, as the loader drops its own. With a fraction on
// one side only a drawing would move by it in every round trip. Projection/mapsAndFlips pins it. Kept inside
// 32 bits, where the result would otherwise be undefined.
int32_t truncated(double height) {
    constexpr double kLowest = std::numeric_limits<int32_t>::min();
    constexpr double kLargest = std::numeric_limits<int32_t>::max();
    return std::isnan(height) ? 0 : static_cast<int32_t>(std::clamp(height, kLowest, kLargest));
}

}  // namespace

PlaneAxis findProjectionPlane(const PointCache& points) {
    const auto normal = findNormal(points);
    if (!normal) return PlaneAxis::kNone;
    struct Row {
        Vector direction;
        PlaneAxis axis;
    };
    static constexpr std::array<Row, 3> kRows = {{
        {{1, 0, 0}, PlaneAxis::kX},
        {{0, 1, 0}, PlaneAxis::kY},
        {{0, 0, 1}, PlaneAxis::kZ},
    }};
    for (const Row& row : kRows) {
        const Vector& d = row.direction;
        if (isAlong(*normal, d) || isAlong(*normal, {-d[0], -d[1], -d[2]})) return row.axis;
    }
    return PlaneAxis::kNone;
}

Projection::Projection(PlaneAxis axis, double flipHeight) : axis_(axis), flipHeight_(truncated(flipHeight)) {}

}  // namespace tzsvg
