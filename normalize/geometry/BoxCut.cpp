#include "normalize/geometry/BoxCut.h"

#include <algorithm>

namespace tznormalize {
namespace {

constexpr int kMostHalvings = 10;  // of a curve, until it counts as a line where it crosses the edge

// The side of a line along an axis that stays.
struct HalfPlane {
    double Point::*axis;
    double limit;
    bool isBelow;

    bool holds(const Point& p) const { return isBelow ? p.*axis <= limit : p.*axis >= limit; }

    Point crossing(const Point& p, const Point& q) const {
        Point at = lerp(p, q, (limit - p.*axis) / (q.*axis - p.*axis));
        at.*axis = limit;
        return at;
    }
};

enum class Kind { kArea, kLine };

// Cuts one sub-path after the other.
class Cutter {
  public:
    Cutter(const HalfPlane& plane, Kind kind) : plane_(plane), isArea_(kind == Kind::kArea) {}

    Path cut(const Path& path) {
        out_.reserve(path.size() + 8, path.points().size() + 16);
        for (const Path::Segment segment : path) {
            if (segment.verb == Verb::kMove) {
                finish();
                begin(segment.points[0]);
            } else if (segment.verb == Verb::kLine) {
                line(segment.points[0]);
            } else if (segment.verb == Verb::kCurve) {
                curve(segment.points[0], segment.points[1], segment.points[2], 0);
            } else if (!isArea_) {
                line(start_);
            }
        }
        finish();
        return std::move(out_);
    }

  private:
    void begin(const Point& start) {
        start_ = current_ = start;
        isOpen_ = true;
        isWritten_ = false;
        if (plane_.holds(start)) go(start);
    }

    void finish() {
        if (!isOpen_) return;
        isOpen_ = false;
        if (!isArea_) return;
        line(start_);
        if (isWritten_) out_.close();
    }

    void go(const Point& point) {
        if (isWritten_) {
            out_.lineTo(point);
        } else {
            out_.moveTo(point);
        }
        isWritten_ = true;
    }

    void line(const Point& end) {
        const bool isIn = plane_.holds(current_);
        if (isIn != plane_.holds(end)) go(plane_.crossing(current_, end));
        if (isIn && !isArea_) isWritten_ = plane_.holds(end);
        if (plane_.holds(end) && end != current_) go(end);
        current_ = end;
    }

    void curve(const Point& a, const Point& b, const Point& end, int halvings) {
        const int held = plane_.holds(current_) + plane_.holds(a) + plane_.holds(b) + plane_.holds(end);
        if (held == 4) {
            out_.curveTo(a, b, end);
            current_ = end;
        } else if (held == 0) {
            current_ = end;
        } else if (halvings == kMostHalvings) {
            line(end);
        } else {
            const Point ab = lerp(a, b, 0.5);
            const Point first = lerp(current_, a, 0.5);
            const Point last = lerp(b, end, 0.5);
            const Point second = lerp(first, ab, 0.5);
            const Point third = lerp(ab, last, 0.5);
            curve(first, second, lerp(second, third, 0.5), halvings + 1);
            curve(third, last, end, halvings + 1);
        }
    }

    const HalfPlane plane_;
    const bool isArea_;
    Path out_;
    Point start_;
    Point current_;
    bool isOpen_ = false;     // a sub-path was begun
    bool isWritten_ = false;  // and something of it lies within, in a line without a gap
};

bool isWithin(const Path& path, const HalfPlane& plane) {
    return std::all_of(path.points().begin(), path.points().end(),
                       [&plane](const Point& p) { return plane.holds(p); });
}

Path cut(const Path& path, const Box& box, Kind kind) {
    const HalfPlane planes[] = {{&Point::x, box.left, false},
                                {&Point::x, box.right, true},
                                {&Point::y, box.top, false},
                                {&Point::y, box.bottom, true}};
    // Even where nothing is cut off the first time changes something: closings become lines.
    Path left = path;
    bool isPlain = false;
    for (const HalfPlane& plane : planes) {
        const bool isAllWithin = isWithin(left, plane);
        if (isAllWithin && isPlain) continue;
        left = Cutter(plane, kind).cut(left);
        isPlain = isAllWithin;
    }
    return left;
}

}  // namespace

Path cutToBox(const Path& path, const Box& box) {
    return cut(path, box, Kind::kArea);
}

Path cutLineToBox(const Path& path, const Box& box) {
    return cut(path, box, Kind::kLine);
}

}  // namespace tznormalize
