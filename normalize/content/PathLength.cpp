#include "normalize/content/PathLength.h"

#include <algorithm>
#include <cmath>

namespace tznormalize {
namespace {

constexpr int kLinesOfCurve = 48;
constexpr double kDegrees = 180.0 / 3.14159265358979323846;

Point onCurve(const Point& start, const Point* curve, double t) {
    const Point a = lerp(start, curve[0], t);
    const Point b = lerp(curve[0], curve[1], t);
    const Point c = lerp(curve[1], curve[2], t);
    return lerp(lerp(a, b, t), lerp(b, c, t), t);
}

}  // namespace

PathLength::PathLength(const Path& path) {
    Point start;
    Point at;
    for (const Path::Segment segment : path) {
        switch (segment.verb) {
            case Verb::kMove:
                start = segment.end();
                corners_.push_back({start, total(), true});
                break;
            case Verb::kLine:
                lineTo(segment.end());
                break;
            case Verb::kCurve:
                for (int i = 1; i <= kLinesOfCurve; ++i)
                    lineTo(onCurve(at, segment.points, double(i) / kLinesOfCurve));
                break;
            case Verb::kClose:
                lineTo(start);
        }
        at = corners_.back().point;
    }
}

void PathLength::lineTo(const Point& point) {
    const double length = tznormalize::distance(corners_.back().point, point);
    if (length > 0.0) corners_.push_back({point, total() + length, false});
}

std::optional<PathLength::Spot> PathLength::at(double distance) const {
    if (!(distance >= 0.0 && distance <= total()) || total() <= 0.0) return std::nullopt;
    auto after = std::lower_bound(corners_.begin(), corners_.end(), distance,
                                  [](const Corner& one, double value) { return one.distance < value; });
    while (after != corners_.end() && (after == corners_.begin() || after->isStart)) ++after;
    if (after == corners_.end()) return std::nullopt;
    const Corner& before = *(after - 1);
    const Point along = after->point - before.point;
    const double share = (distance - before.distance) / (after->distance - before.distance);
    return Spot{lerp(before.point, after->point, share), std::atan2(along.y, along.x) * kDegrees};
}

}  // namespace tznormalize
