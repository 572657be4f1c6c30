#include "normalize/geometry/Path.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tznormalize {
namespace {

double cubicAt(double p0, double p1, double p2, double p3, double t) {
    const double s = 1 - t;
    return s * s * s * p0 + 3 * s * s * t * p1 + 3 * s * t * t * p2 + t * t * t * p3;
}

// Widens a range by where a cubic turns between its ends, one axis of it.
void addExtremes(double p0, double p1, double p2, double p3, double& low, double& high) {
    if (std::min(p0, p3) <= std::min(p1, p2) && std::max(p1, p2) <= std::max(p0, p3)) return;
    // The derivative over 3, as a t² + b t + c.
    const double a = -p0 + 3 * p1 - 3 * p2 + p3;
    const double b = 2 * (p0 - 2 * p1 + p2);
    const double c = p1 - p0;
    constexpr double kNone = -1.0;
    std::array<double, 2> turns = {kNone, kNone};
    const double under = b * b - 4 * a * c;
    if (std::abs(a) < 1e-12) {
        if (std::abs(b) > 1e-12) turns[0] = -c / b;
    } else if (under >= 0) {
        turns = {(-b + std::sqrt(under)) / (2 * a), (-b - std::sqrt(under)) / (2 * a)};
    }
    for (const double t : turns) {
        if (!(t > 0 && t < 1)) continue;
        const double value = cubicAt(p0, p1, p2, p3, t);
        low = std::min(low, value);
        high = std::max(high, value);
    }
}

}  // namespace

void Path::append(const Verb* verbs, size_t verbCount, const Point* points, size_t pointCount) {
    verbs_.insert(verbs_.end(), verbs, verbs + verbCount);
    points_.insert(points_.end(), points, points + pointCount);
}

void Path::append(const Path& path) {
    append(path.verbs_.data(), path.verbs_.size(), path.points_.data(), path.points_.size());
}

void Path::reserve(size_t verbs, size_t points) {
    verbs_.reserve(verbs);
    points_.reserve(points);
}

bool Path::isFinite() const {
    return std::all_of(points_.begin(), points_.end(),
                       [](const Point& point) { return std::isfinite(point.x) && std::isfinite(point.y); });
}

bool Path::hasCurves() const {
    return std::find(verbs_.begin(), verbs_.end(), Verb::kCurve) != verbs_.end();
}

bool Path::isClosedPolygon() const {
    return verbs_.size() > 2 && verbs_.back() == Verb::kClose && points_.size() == verbs_.size() - 1 &&
           !hasCurves() && std::count(verbs_.begin(), verbs_.end(), Verb::kMove) == 1;
}

bool Path::coversArea() const {
    return (verbs_.size() > 2 || hasCurves()) &&
           std::any_of(points_.begin() + 1, points_.end(),
                       [this](const Point& p) { return p != points_.front(); });
}

void Path::map(const Matrix& matrix) {
    if (matrix.isIdentity()) return;
    for (Point& point : points_) point = matrix.map(point);
}

Path Path::mapped(const Matrix& matrix) const {
    Path out = *this;
    out.map(matrix);
    return out;
}

std::optional<Box> Path::controlsBox() const {
    if (points_.empty()) return std::nullopt;
    Box box{points_.front().x, points_.front().y, points_.front().x, points_.front().y};
    for (const Point& point : points_) box.add(point);
    return box;
}

std::optional<Box> Path::controlsBox(const Matrix& matrix) const {
    if (points_.empty()) return std::nullopt;
    const Point first = matrix.map(points_.front());
    Box box{first.x, first.y, first.x, first.y};
    for (const Point& point : points_) box.add(matrix.map(point));
    return box;
}

std::optional<Box> Path::tightBox() const {
    if (!hasCurves()) return controlsBox();
    std::optional<Box> box;
    Point current;
    for (const Segment segment : *this) {
        if (segment.verb == Verb::kClose) continue;
        const Point end = segment.end();
        if (!box) box = Box{end.x, end.y, end.x, end.y};
        box->add(end);
        if (segment.verb == Verb::kCurve) {
            const Point* const p = segment.points;
            addExtremes(current.x, p[0].x, p[1].x, p[2].x, box->left, box->right);
            addExtremes(current.y, p[0].y, p[1].y, p[2].y, box->top, box->bottom);
        }
        current = end;
    }
    return box;
}

}  // namespace tznormalize
