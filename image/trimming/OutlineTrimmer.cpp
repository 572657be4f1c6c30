#include "image/trimming/OutlineTrimmer.h"

#include <algorithm>
#include <cmath>

#include "image/StrokeReach.h"

namespace tzsvg {
namespace {

enum Side : unsigned { kLeft = 1, kAbove = 2, kRight = 4, kBelow = 8, kAnySide = 15 };

// How many pixels beyond the tile a piece is near.
constexpr double kMargin = 16.0;

// How far the lines that Qt makes of a curve may be from it, and how many they are at most
// (QBezier::addToPolygon(), which halves a curve nine times).
constexpr double kMostDeviation = kMargin / 2.0;
constexpr double kMostLines = 512.0;

// Qt cuts what lies more than 2^23 pixels away, or is wider or higher than that. So nothing trimmed is.
constexpr double kFarthest = 1U << 22U;

// A curve is looked at in parts, each a half of the part before.
constexpr int kMostHalvings = 8;

// Of these Qt strokes each line alone, in another way than it strokes other paths.
bool isOfSingleLines(const QPainterPath& path) {
    for (int i = 0; i < path.elementCount(); ++i) {
        if (path.elementAt(i).type !=
            (i % 2 == 0 ? QPainterPath::MoveToElement : QPainterPath::LineToElement))
            return false;
    }
    return true;
}

}  // namespace

void addLine(const QPointF& end, QPainterPath& to) {
    const bool isLeftOut = to.currentPosition() == end;
    const double elsewhere = end.x() / 2.0 + (end.x() > 0.0 ? -1.0 : 1.0);  // not taken for the end
    to.lineTo(isLeftOut ? QPointF(elsewhere, end.y()) : end);
    if (isLeftOut) to.setElementPositionAt(to.elementCount() - 1, end.x(), end.y());
}

// Puts a path together. Pieces on one side of the tile, one after the other, become one line, or two.
class OutlineTrimmer::Run {
  public:
    Run(const OutlineTrimmer& trimmer, const QPointF& start, QPainterPath& to)
        : trimmer_(trimmer), to_(to), from_(start), end_(start) {
        to_.moveTo(start);
    }

    void pass(const QPointF& end, unsigned sides) {
        if ((sides_ & sides) == 0) finish();  // then sides_ is kAnySide again
        sides_ &= sides;
        end_ = end;
    }

    void keep(const Piece& piece) {
        finish();
        const auto& [start, first, second, end] = piece.points;
        if (piece.isCurve) {
            to_.cubicTo(first, second, end);
        } else {
            addLine(end, to_);
        }
        from_ = end;
    }

    void finish() {
        if (sides_ == kAnySide) return;
        // Qt follows a vertical line within the tile's rows alone, and level ones, and those above or below,
        // not at all.
        if ((sides_ & (kAbove | kBelow)) == 0) addLine(corner(), to_);
        addLine(end_, to_);
        from_ = end_;
        sides_ = kAnySide;
    }

  private:
    // On the same side, beside the one end and level with the other.
    QPointF corner() const {
        const QTransform& t = trimmer_.toPixels_;
        if (t.m12() == 0.0 && t.m21() == 0.0) return {from_.x(), end_.y()};
        return trimmer_.fromPixels_.map(QPointF(t.map(from_).x(), t.map(end_).y()));
    }

    const OutlineTrimmer& trimmer_;
    QPainterPath& to_;
    QPointF from_;
    QPointF end_;
    unsigned sides_ = kAnySide;  // on which all since `from_` lies; any: there is nothing
};

OutlineTrimmer::OutlineTrimmer(const QTransform& toPixels, QSize tile, double reach)
    : toPixels_(toPixels), fromPixels_(toPixels.inverted()) {
    const double by = kMargin + reach * largestScale(toPixels);
    left_ = -by;
    top_ = -by;
    right_ = tile.width() + by;
    bottom_ = tile.height() + by;
}

std::optional<OutlineTrimmer::Trimmed> OutlineTrimmer::filled(const QPainterPath& path) const {
    if (!isTellable(path)) return std::nullopt;
    Trimmed trimmed{{}, false};
    trimmed.path.setFillRule(path.fillRule());
    for (Pieces& pieces : subPathsOf(path, true)) {
        const bool isNear = markNear(pieces);
        if (!isNear && isBeside(pieces)) continue;
        trimmed.isNear = trimmed.isNear || isNear;
        append(pieces, trimmed.path);
    }
    return trimmed;
}

std::optional<OutlineTrimmer::Trimmed> OutlineTrimmer::stroked(const QPainterPath& path) const {
    if (!isTellable(path) || isOfSingleLines(path)) return std::nullopt;
    Trimmed trimmed{{}, false};
    for (Pieces& pieces : subPathsOf(path, false)) {
        if (!markNear(pieces)) continue;
        trimmed.isNear = true;
        append(pieces, trimmed.path);
    }
    if (trimmed.isNear && isOfSingleLines(trimmed.path))
        addLine(trimmed.path.currentPosition(), trimmed.path);  // without length, which paints nothing
    return trimmed;
}

bool OutlineTrimmer::isTellable(const QPainterPath& path) const {
    if (!toPixels_.isAffine() || !toPixels_.isInvertible()) return false;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPointF p = toPixels_.map(QPointF(path.elementAt(i)));
        if (!(std::abs(p.x()) + right_ < kFarthest && std::abs(p.y()) + bottom_ < kFarthest)) return false;
    }
    return true;
}

// On which sides of the tile it lies; none when it may be near.
unsigned OutlineTrimmer::sidesOf(const QPointF& point) const {
    const QPointF p = toPixels_.map(point);
    return (p.x() < left_ ? kLeft : 0U) | (p.y() < top_ ? kAbove : 0U) | (p.x() > right_ ? kRight : 0U) |
           (p.y() > bottom_ ? kBelow : 0U);
}

unsigned OutlineTrimmer::sidesOf(const Curve& curve) const {
    return sidesOf(curve[0]) & sidesOf(curve[1]) & sidesOf(curve[2]) & sidesOf(curve[3]);
}

std::vector<OutlineTrimmer::Pieces> OutlineTrimmer::subPathsOf(const QPainterPath& path, bool closes) const {
    std::vector<Pieces> subPaths;
    QPointF start;
    QPointF last;
    unsigned lastSides = 0;
    bool isNew = true;
    const auto add = [&](const QPointF& first, const QPointF& second, const QPointF& end, bool isCurve) {
        if (isNew) subPaths.emplace_back();
        isNew = false;
        const unsigned endSides = sidesOf(end);
        unsigned sides = lastSides & endSides;
        // A curve lies within its control points.
        if (isCurve && sides != 0) sides &= sidesOf(first) & sidesOf(second);
        subPaths.back().push_back({{last, first, second, end}, isCurve, sides, false});
        last = end;
        lastSides = endSides;
    };
    const auto finish = [&] {
        if (closes && !isNew && last != start) add(start, start, start, false);
        isNew = true;
    };
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element at = path.elementAt(i);
        if (at.isMoveTo()) {
            finish();
            start = last = at;
            lastSides = sidesOf(start);
        } else if (at.isLineTo()) {
            add(at, at, at, false);
        } else {
            add(at, path.elementAt(i + 1), path.elementAt(i + 2), true);
            i += 2;
        }
    }
    finish();
    return subPaths;
}

// Whether the lines that Qt makes of a curve are near to it: lines between n points, as far apart in the
// curve's parameter, are no farther from it than an eighth of its second derivative, divided by n squared;
// and the derivative is at most six times the second difference of its control points.
bool OutlineTrimmer::isFineEnough(const Curve& c) const {
    const auto bend = [&](const QPointF& a, const QPointF& b, const QPointF& d) {
        return (toPixels_.map(a) - 2.0 * toPixels_.map(b) + toPixels_.map(d)).manhattanLength();
    };
    const double bent = 0.75 * std::max(bend(c[0], c[1], c[2]), bend(c[1], c[2], c[3]));
    return bent <= kMostDeviation * kMostLines * kMostLines;
}

// Whether a curve is not near, and the way that it takes. Where it goes from one side to another, the point
// lies on both.
bool OutlineTrimmer::passesBy(const Curve& c, int halvings, Run* run) const {
    if (const unsigned sides = sidesOf(c); sides != 0) {
        if (run) run->pass(c[3], sides);
        return true;
    }
    if (halvings == 0) return false;
    const QPointF a = (c[0] + c[1]) / 2;
    const QPointF b = (c[1] + c[2]) / 2;
    const QPointF d = (c[2] + c[3]) / 2;
    const QPointF half = (a + b + b + d) / 4;
    return passesBy({c[0], a, (a + b) / 2, half}, halvings - 1, run) &&
           passesBy({half, (b + d) / 2, d, c[3]}, halvings - 1, run);
}

// Finds what is near; false when nothing is. A point that is near makes both its pieces near, so that joins
// of strokes stay as they were.
bool OutlineTrimmer::markNear(Pieces& pieces) const {
    bool isAny = false;
    for (Piece& piece : pieces) {
        piece.isNear = piece.sides == 0 && !(piece.isCurve && isFineEnough(piece.points) &&
                                             passesBy(piece.points, kMostHalvings, nullptr));
        isAny = isAny || piece.isNear;
    }
    return isAny;
}

// Whether all lies on one side.
bool OutlineTrimmer::isBeside(const Pieces& pieces) const {
    unsigned sides = kAnySide;
    for (const Piece& piece : pieces) sides &= piece.sides;
    return sides != 0;
}

void OutlineTrimmer::append(const Pieces& pieces, QPainterPath& to) const {
    Run run(*this, pieces.front().points[0], to);
    for (const Piece& piece : pieces) {
        if (piece.isNear) {
            run.keep(piece);
        } else if (piece.sides != 0) {
            run.pass(piece.points[3], piece.sides);
        } else {
            static_cast<void>(passesBy(piece.points, kMostHalvings, &run));
        }
    }
    run.finish();
}

}  // namespace tzsvg
