#include "normalize/geometry/SubPaths.h"

#include <algorithm>
#include <cmath>

#include "normalize/write/Grid.h"

namespace tznormalize {
namespace {

constexpr double kSamePoint = 1e-9;
constexpr double kSmoothTurn = 0.1;  // radians: no seam is seen under it

// The segments of one sub-path, its move first.
using SubPath = std::vector<Path::Segment>;

template <typename Use>
void forEachSubPath(const Path& path, Use use) {
    SubPath piece;
    for (const Path::Segment segment : path) {
        if (segment.verb == Verb::kMove && !piece.empty()) {
            use(piece);
            piece.clear();
        }
        piece.push_back(segment);
    }
    if (!piece.empty()) use(piece);
}

void append(Path& path, const SubPath& piece) {
    for (const Path::Segment& segment : piece) path.append(segment);
}

bool isDot(const SubPath& piece, double step) {
    const auto grid = [step](double value) { return std::round(value / step); };
    const Point start = piece.front().end();
    const auto isAtStart = [&](const Point& p) {
        return grid(p.x) == grid(start.x) && grid(p.y) == grid(start.y);
    };
    return piece.size() > 1 && std::all_of(piece.begin(), piece.end(), [&](const Path::Segment& segment) {
               return std::all_of(segment.points, segment.points + pointCount(segment.verb), isAtStart);
           });
}

// The way from `start` to the first of the points that is elsewhere; nothing, when none is.
Point wayFrom(const Point& start, const Point* points, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        if (distance(points[i], start) > kSamePoint) return points[i] - start;
    }
    return {};
}

// The first part of a segment, about as long as `length`; false when the segment has no length.
bool appendBeginning(Path& path, const Point& start, const Path::Segment& segment, double length) {
    const Point* const p = segment.points;
    if (segment.verb == Verb::kLine) {
        const double whole = distance(start, p[0]);
        if (whole < kSamePoint) return false;
        path.lineTo(lerp(start, p[0], std::min(1.0, length / whole)));
        return true;
    }
    const double whole = distance(start, p[0]) + distance(p[0], p[1]) + distance(p[1], p[2]);
    if (whole < kSamePoint) return false;
    const double t = std::min(1.0, length / whole);
    const Point ab = lerp(start, p[0], t);
    const Point bc = lerp(p[0], p[1], t);
    const Point cd = lerp(p[1], p[2], t);
    const Point abc = lerp(ab, bc, t);
    const Point bcd = lerp(bc, cd, t);
    path.curveTo(ab, abc, lerp(abc, bcd, t));
    return true;
}

// By how much the outline turns at its start.
double turnAtStart(const Path& body, const SubPath& piece) {
    const Point start = piece.front().end();
    const Point leave = wayFrom(start, piece[1].points, pointCount(piece[1].verb));
    const std::vector<Point>& points = body.points();  // the last one is the start
    Point arrive = leave;
    const size_t before = points.size() > 3 ? 3 : points.size() - 1;
    for (size_t i = 1; i <= before; ++i) {
        const Point& p = points[points.size() - 1 - i];
        if (distance(p, start) <= kSamePoint) continue;
        arrive = start - p;
        break;
    }
    return std::abs(
        std::atan2(arrive.x * leave.y - arrive.y * leave.x, arrive.x * leave.x + arrive.y * leave.y));
}

// A closed sub-path run on, or as it is where that is not needed.
void appendRunOn(Path& path, const SubPath& piece, double length, double step, bool isDashed) {
    const Point start = piece.front().end();
    Path open;
    for (size_t i = 0; i + 1 < piece.size(); ++i) open.append(piece[i]);
    if (distance(open.points().back(), start) > step / 2) open.lineTo(start);
    const bool isSmooth = !isDashed && turnAtStart(open, piece) < kSmoothTurn;
    if (isSmooth || !appendBeginning(open, start, piece[1], length)) {
        append(path, piece);
        return;
    }
    path.append(open);
}

}  // namespace

Path onGrid(const Path& path, const Grid& grid) {
    Path out;
    out.reserve(path.size());
    Point current;
    for (const Path::Segment segment : path) {
        Point points[3];
        const size_t count = pointCount(segment.verb);
        bool isSomewhere = segment.verb == Verb::kMove || segment.verb == Verb::kClose;
        for (size_t i = 0; i < count; ++i) {
            points[i] = {grid.round(segment.points[i].x), grid.round(segment.points[i].y)};
            isSomewhere |= points[i] != current;
        }
        if (!isSomewhere) continue;
        out.append(Path::Segment{segment.verb, points});
        if (count > 0) current = points[count - 1];
    }
    return out;
}

Path withoutLoneMoves(const Path& path) {
    const auto isLone = [](const SubPath& piece) {
        return piece.size() == 1 || (piece.size() == 2 && piece.back().verb == Verb::kClose);
    };
    Path out;
    out.reserve(path.size());
    forEachSubPath(path, [&](const SubPath& piece) {
        if (!isLone(piece)) append(out, piece);
    });
    return out;
}

Path withDots(const Path& path, double length, double step) {
    Path out;
    out.reserve(path.size());
    forEachSubPath(path, [&](const SubPath& piece) {
        if (!isDot(piece, step)) {
            append(out, piece);
            return;
        }
        const Point start = piece.front().end();
        out.moveTo(start);
        out.lineTo({start.x + std::max(length, 2 * step), start.y});
    });
    return out;
}

bool hasClosing(const Path& path) {
    return std::find(path.verbs().begin(), path.verbs().end(), Verb::kClose) != path.verbs().end();
}

bool isClosedThroughout(const Path& path) {
    const std::vector<Verb>& verbs = path.verbs();
    return std::count(verbs.begin(), verbs.end(), Verb::kMove) ==
           std::count(verbs.begin(), verbs.end(), Verb::kClose);
}

Path runOn(const Path& path, double length, double step, bool isDashed) {
    Path out;
    out.reserve(path.size() + 2);
    forEachSubPath(path, [&](const SubPath& piece) {
        if (piece.back().verb == Verb::kClose && piece.size() > 2) {
            appendRunOn(out, piece, std::max(length, 2 * step), step, isDashed);
        } else {
            append(out, piece);
        }
    });
    return out;
}

}  // namespace tznormalize
