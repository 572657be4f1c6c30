#include "normalize/geometry/PathVertices.h"

#include <cmath>
#include <optional>

namespace tznormalize {
namespace {

constexpr double kDegrees = 180.0 / 3.14159265358979323846;

// From one vertex to the next, with the directions in which it leaves and arrives; none where it has no
// length.
struct Way {
    std::optional<Point> leaving;
    std::optional<Point> arriving;
    bool isGap = false;  // between sub-paths
};

std::optional<Point> unit(const Point& from, const Point& to) {
    const double length = distance(from, to);
    if (!(length > 0.0)) return std::nullopt;
    return Point{(to.x - from.x) / length, (to.y - from.y) / length};
}

std::optional<Point> firstOf(std::initializer_list<std::optional<Point>> directions) {
    for (const std::optional<Point>& one : directions) {
        if (one) return one;
    }
    return std::nullopt;
}

Way curveWay(const Point& start, const Point* curve) {
    return {firstOf({unit(start, curve[0]), unit(start, curve[1]), unit(start, curve[2])}),
            firstOf({unit(curve[1], curve[2]), unit(curve[0], curve[2]), unit(start, curve[2])}), false};
}

double directionOf(const std::optional<Point>& coming, const std::optional<Point>& going) {
    if (!coming && !going) return 0.0;
    const Point a = coming.value_or(going.value_or(Point()));
    const Point b = going.value_or(a);
    // Straight back: to the left of the way that comes, as renderers have it.
    const Point sum = {a.x + b.x, a.y + b.y};
    const bool isReversal = std::hypot(sum.x, sum.y) < 1e-9;
    const double angle =
        isReversal ? std::atan2(a.y, a.x) + 3.14159265358979323846 / 2.0 : std::atan2(sum.y, sum.x);
    return angle * kDegrees;
}

// Vertices and the ways between them: ways[i] leads from points[i] to points[i + 1].
struct Walk {
    std::vector<Point> points;
    std::vector<Way> ways;
    std::vector<size_t> starts;  // of the sub-path of each vertex
    std::vector<bool> closes;    // vertices that a closing made

    void add(const Point& point, const Way& way, size_t start, bool isClosing) {
        if (!points.empty()) ways.push_back(way);
        points.push_back(point);
        starts.push_back(start);
        closes.push_back(isClosing);
    }
};

Walk walkOver(const Path& path) {
    Walk walk;
    size_t start = 0;
    for (const Path::Segment segment : path) {
        const Point at = walk.points.empty() ? Point() : walk.points.back();
        switch (segment.verb) {
            case Verb::kMove:
                start = walk.points.size();
                walk.add(segment.end(), {{}, {}, true}, start, false);
                break;
            case Verb::kLine:
                walk.add(segment.end(), {unit(at, segment.end()), unit(at, segment.end()), false}, start,
                         false);
                break;
            case Verb::kCurve:
                walk.add(segment.end(), curveWay(at, segment.points), start, false);
                break;
            case Verb::kClose:
                walk.add(walk.points[start],
                         {unit(at, walk.points[start]), unit(at, walk.points[start]), false}, start, true);
        }
    }
    return walk;
}

// The nearest way of some length before and behind each vertex, within its sub-path.
std::vector<std::optional<Point>> comings(const Walk& walk) {
    std::vector<std::optional<Point>> out(walk.points.size());
    for (size_t i = 1; i < out.size(); ++i) {
        const Way& way = walk.ways[i - 1];
        if (!way.isGap) out[i] = way.arriving ? way.arriving : out[i - 1];
    }
    return out;
}

std::vector<std::optional<Point>> goings(const Walk& walk) {
    std::vector<std::optional<Point>> out(walk.points.size());
    for (size_t i = out.size(); i-- > 1;) {
        const Way& way = walk.ways[i - 1];
        if (!way.isGap) out[i - 1] = way.leaving ? way.leaving : out[i];
    }
    return out;
}

}  // namespace

std::vector<Vertex> verticesOf(const Path& path) {
    const Walk walk = walkOver(path);
    std::vector<std::optional<Point>> coming = comings(walk);
    std::vector<std::optional<Point>> going = goings(walk);
    // A closed sub-path goes on at its start.
    for (size_t i = 0; i < walk.points.size(); ++i) {
        if (!walk.closes[i]) continue;
        going[i] = going[walk.starts[i]];
        coming[walk.starts[i]] = coming[i];
    }
    std::vector<Vertex> out;
    for (size_t i = 0; i < walk.points.size(); ++i)
        out.push_back({walk.points[i], directionOf(coming[i], going[i])});
    return out;
}

}  // namespace tznormalize
