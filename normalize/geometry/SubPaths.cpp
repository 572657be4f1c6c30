#include "normalize/geometry/SubPaths.h"

#include <algorithm>
#include <cmath>

#include "normalize/write/Grid.h"

namespace tznormalize {
namespace {

constexpr double kSamePoint = 1e-9;
constexpr double kSmoothTurn = 0.1;  // radians: no seam is seen under it

// A sub-path where it stands in its path, its move first.
struct SubPath {
    const Verb* verbs;
    size_t size;
    const Point* points;
    size_t pointCount;

    Point start() const { return points[0]; }
    bool isClosed() const { return verbs[size - 1] == Verb::kClose; }
    bool isLone() const { return size == 1 || (size == 2 && isClosed()); }  // nothing is drawn
};

template <typename Use>
void forEachSubPath(const Path& path, Use use) {
    const Verb* const end = path.verbs().data() + path.size();
    const Point* points = path.points().data();
    for (const Verb* verbs = path.verbs().data(); verbs != end;) {
        const Verb* verb = verbs;
        size_t count = 0;
        do {
            count += pointCount(*verb++);
        } while (verb != end && *verb != Verb::kMove);
        use(SubPath{verbs, static_cast<size_t>(verb - verbs), points, count});
        verbs = verb;
        points += count;
    }
}

void append(Path& path, const SubPath& piece) {
    path.append(piece.verbs, piece.size, piece.points, piece.pointCount);
}

bool isDot(const SubPath& piece, double step) {
    const auto grid = [step](double value) { return std::round(value / step); };
    const Point start = piece.start();
    return piece.size > 1 && std::all_of(piece.points, piece.points + piece.pointCount, [&](const Point& p) {
               return grid(p.x) == grid(start.x) && grid(p.y) == grid(start.y);
           });
}

// The way from `start` to the first of the points that is elsewhere; nothing, when none is.
Point wayFrom(const Point& start, const Point* points, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        if (distance(points[i], start) > kSamePoint) return points[i] - start;
    }
    return {};
}

// How long the first segment is: a curve by its controls.
double firstLength(const SubPath& piece) {
    const Point* const p = piece.points;
    if (piece.verbs[1] == Verb::kLine) return distance(p[0], p[1]);
    return distance(p[0], p[1]) + distance(p[1], p[2]) + distance(p[2], p[3]);
}

// The first part of the first segment, the share `t` of it.
void appendBeginning(Path& path, const SubPath& piece, double t) {
    const Point* const p = piece.points;
    const Point ab = lerp(p[0], p[1], t);
    if (piece.verbs[1] == Verb::kLine) {
        path.lineTo(ab);
        return;
    }
    const Point bc = lerp(p[1], p[2], t);
    const Point cd = lerp(p[2], p[3], t);
    const Point abc = lerp(ab, bc, t);
    const Point bcd = lerp(bc, cd, t);
    path.curveTo(ab, abc, lerp(abc, bcd, t));
}

// By how much the outline turns at its start. It comes from the last of the `count` points that is elsewhere;
// of a curve's, from one of its controls.
double turnAtStart(const SubPath& piece, size_t count) {
    const Point start = piece.start();
    const Point leave = wayFrom(start, piece.points + 1, pointCount(piece.verbs[1]));
    Point arrive = leave;
    const size_t before = std::min<size_t>(count, 3);
    for (size_t i = 1; i <= before; ++i) {
        const Point& p = piece.points[count - i];
        if (distance(p, start) <= kSamePoint) continue;
        arrive = start - p;
        break;
    }
    return std::abs(
        std::atan2(arrive.x * leave.y - arrive.y * leave.x, arrive.x * leave.x + arrive.y * leave.y));
}

// A closed sub-path run on, or as it is where that is not needed.
void appendRunOn(Path& path, const SubPath& piece, double length, double step, bool isDashed) {
    const Point start = piece.start();
    // Its last line, to the start, may be left to the closing.
    const bool isBack = distance(piece.points[piece.pointCount - 1], start) <= step / 2;
    const double whole = firstLength(piece);
    if (whole < kSamePoint ||
        (!isDashed && turnAtStart(piece, piece.pointCount - size_t{isBack}) < kSmoothTurn)) {
        append(path, piece);
        return;
    }
    path.append(piece.verbs, piece.size - 1, piece.points, piece.pointCount);
    if (!isBack) path.lineTo(start);
    appendBeginning(path, piece, std::min(1.0, length / whole));
}

}  // namespace

Path onGrid(const Path& path, const Grid& grid) {
    Path out;
    out.reserve(path.size(), path.points().size());
    const auto rounded = [&grid](const Point& p) { return Point{grid.round(p.x), grid.round(p.y)}; };
    Point current;
    for (const Path::Segment segment : path) {
        if (segment.verb == Verb::kClose) {
            out.close();
            continue;
        }
        const Point end = rounded(segment.end());
        if (segment.verb == Verb::kMove) {
            out.moveTo(end);
        } else if (segment.verb == Verb::kLine) {
            if (end != current) out.lineTo(end);
        } else {
            const Point control1 = rounded(segment.points[0]);
            const Point control2 = rounded(segment.points[1]);
            if (end != current || control1 != current || control2 != current)
                out.curveTo(control1, control2, end);
        }
        current = end;
    }
    return out;
}

Path withoutLoneMoves(Path path) {
    bool hasLone = false;
    forEachSubPath(path, [&](const SubPath& piece) { hasLone |= piece.isLone(); });
    if (!hasLone) return path;
    Path out;
    out.reserve(path.size(), path.points().size());
    forEachSubPath(path, [&](const SubPath& piece) {
        if (!piece.isLone()) append(out, piece);
    });
    return out;
}

Path withDots(Path path, double length, double step) {
    bool hasDots = false;
    forEachSubPath(path, [&](const SubPath& piece) { hasDots |= isDot(piece, step); });
    if (!hasDots) return path;
    Path out;
    out.reserve(path.size(), path.points().size());
    forEachSubPath(path, [&](const SubPath& piece) {
        if (!isDot(piece, step)) {
            append(out, piece);
            return;
        }
        const Point start = piece.start();
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
    out.reserve(path.size() + 2, path.points().size() + 4);
    forEachSubPath(path, [&](const SubPath& piece) {
        if (piece.isClosed() && piece.size > 2) {
            appendRunOn(out, piece, std::max(length, 2 * step), step, isDashed);
        } else {
            append(out, piece);
        }
    });
    return out;
}

}  // namespace tznormalize
