#include "image/painting/OutlineTrimmer.h"

#include <algorithm>
#include <cmath>

#include "image/StrokeReach.h"

namespace tzsvg {
namespace {

enum Side : unsigned { kLeft = 1, kAbove = 2, kRight = 4, kBelow = 8, kAnySide = 15 };

// How many pixels beyond the tile a piece is near.
constexpr double kMargin = 16.0;

// How far the lines that Qt makes of a curve may be from it.
constexpr double kMostDeviation = kMargin / 2.0;
constexpr double kMostLines = 1U << kMostHalvings;

// Qt cuts what lies more than 2^23 pixels away, or is wider or higher than that. So nothing trimmed is.
constexpr double kFarthest = 1U << 22U;

// QPointF::operator== takes points for the same that are almost.
bool isSame(const QPointF& a, const QPointF& b) {
    return a.x() == b.x() && a.y() == b.y();
}

}  // namespace

void Outline::moveTo(const QPointF& point) {
    points.push_back(point);
    types.push_back(QPainterPath::MoveToElement);
}

void Outline::lineTo(const QPointF& point) {
    points.push_back(point);
    types.push_back(QPainterPath::LineToElement);
}

void Outline::cubicTo(const QPointF& control1, const QPointF& control2, const QPointF& end) {
    points.insert(points.end(), {control1, control2, end});
    types.insert(types.end(), {QPainterPath::CurveToElement, QPainterPath::CurveToDataElement,
                               QPainterPath::CurveToDataElement});
}

// Adds a sub-path to an outline. Pieces on one side of the tile, one after the other, become one line, or
// two.
class OutlineTrimmer::SubPath {
  public:
    SubPath(const OutlineTrimmer& trimmer, bool isOfArea, const QPointF& start, Outline& outline)
        : trimmer_(trimmer),
          isOfArea_(isOfArea),
          outline_(outline),
          before_(outline.points.size()),
          start_(start),
          from_(start),
          end_(start) {
        outline_.moveTo(start);
    }

    const QPointF& at() const { return end_; }

    // A piece on these sides.
    void pass(const QPointF& end, unsigned sides) {
        if ((sides_ & sides) == 0) finish();  // then sides_ is kAnySide again
        sides_ &= sides;
        end_ = end;
    }

    void addLine(const QPointF& end) {
        const unsigned from = trimmer_.sidesOf(end_);
        const unsigned to = trimmer_.sidesOf(end);
        if ((from & to) != 0) return pass(end, from & to);
        if (const auto corner = trimmer_.cornerPassed(end_, end)) {
            const unsigned around = trimmer_.sidesOf(*corner);
            pass(*corner, from & around);
            return pass(end, around & to);
        }
        const QLineF whole(end_, end);
        const QLineF cut = isOfArea_ ? trimmer_.cut(whole) : whole;
        if (!isSame(cut.p1(), end_)) pass(cut.p1(), from & trimmer_.sidesOf(cut.p1()));
        finish();
        outline_.lineTo(cut.p2());
        setKept(cut.p2());
        if (!isSame(cut.p2(), end)) pass(end, trimmer_.sidesOf(cut.p2()) & to);
    }

    void addWhole(const CubicCurve& curve) {
        finish();
        outline_.cubicTo(curve[1], curve[2], curve[3]);
        setKept(curve[3]);
    }

    void finish() {
        if (sides_ == kAnySide) return;
        // Qt follows a vertical line within the tile's rows alone, and level ones, and those above or below,
        // not at all.
        if ((sides_ & (kAbove | kBelow)) == 0) {
            const QPointF beside = corner();
            if ((trimmer_.sidesOf(beside) & sides_) != 0) outline_.lineTo(beside);  // but for rounding
        }
        outline_.lineTo(end_);
        from_ = end_;
        sides_ = kAnySide;
    }

    // Areas are closed, and those on one side paint nothing; strokes paint where they are near.
    void end() {
        if (isOfArea_ && end_ != start_) addLine(start_);
        const bool isBeside = outline_.points.size() == before_ + 1;
        if (isOfArea_ ? !isBeside : isNear_) return finish();
        outline_.points.resize(before_);
        outline_.types.resize(before_);
    }

  private:
    void setKept(const QPointF& end) {
        from_ = end;
        end_ = end;
        isNear_ = true;
    }

    // On the same side, beside the one end and level with the other.
    QPointF corner() const {
        const QTransform& t = trimmer_.toPixels_;
        if (t.m12() == 0.0 && t.m21() == 0.0) return {from_.x(), end_.y()};
        return trimmer_.fromPixels_.map(QPointF(t.map(from_).x(), t.map(end_).y()));
    }

    const OutlineTrimmer& trimmer_;
    const bool isOfArea_;
    Outline& outline_;
    const size_t before_;  // points of other sub-paths
    const QPointF start_;
    QPointF from_;
    QPointF end_;
    unsigned sides_ = kAnySide;  // on which all since `from_` lies; any: there is nothing
    bool isNear_ = false;
};

OutlineTrimmer::OutlineTrimmer(const QTransform& toPixels, QSize tile, double reach)
    : toPixels_(toPixels),
      rows_(tile.height()),
      fromPixels_(toPixels.inverted()),
      flatness_(flatnessOf(toPixels)) {
    const double by = kMargin + reach * largestScale(toPixels);
    left_ = -by;
    top_ = -by;
    right_ = tile.width() + by;
    bottom_ = tile.height() + by;
}

std::optional<Outline> OutlineTrimmer::filled(const OutlineView& outline) const {
    if (!isTellable(outline)) return std::nullopt;
    return trimmed(outline, true,
                   [&](const CubicCurve& curve, SubPath& to) { addLines(curve, kMostHalvings, to); });
}

std::optional<Outline> OutlineTrimmer::stroked(const OutlineView& outline) const {
    if (!isTellable(outline)) return std::nullopt;
    return trimmed(outline, false, [&](const CubicCurve& curve, SubPath& to) {
        if (isFineEnough(curve) && passesBy(curve, kMostHalvings, nullptr)) {
            static_cast<void>(passesBy(curve, kMostHalvings, &to));
        } else {
            to.addWhole(curve);
        }
    });
}

bool OutlineTrimmer::isTellable(const OutlineView& outline) const {
    if (!toPixels_.isAffine() || !toPixels_.isInvertible()) return false;
    return std::all_of(outline.points, outline.points + outline.count, [&](const QPointF& point) {
        const QPointF p = toPixels_.map(point);
        return std::abs(p.x()) + right_ < kFarthest && std::abs(p.y()) + bottom_ < kFarthest;
    });
}

// On which sides of the tile it lies; none when it may be near.
unsigned OutlineTrimmer::sidesOf(const QPointF& point) const {
    const QPointF p = toPixels_.map(point);
    return (p.x() < left_ ? kLeft : 0U) | (p.y() < top_ ? kAbove : 0U) | (p.x() > right_ ? kRight : 0U) |
           (p.y() > bottom_ ? kBelow : 0U);
}

// A curve lies within its control points.
unsigned OutlineTrimmer::sidesOf(const CubicCurve& curve) const {
    unsigned sides = kAnySide;
    for (size_t i = 0; i < curve.size() && sides != 0; ++i) sides &= sidesOf(curve.at(i));
    return sides;
}

// Where a line goes from one side of the tile to another without coming near: a point on both, beside the
// corner that it passes.
std::optional<QPointF> OutlineTrimmer::cornerPassed(const QPointF& from, const QPointF& to) const {
    struct Corner {
        QPointF at;
        unsigned sides;
        double distance;
    };
    std::array<Corner, 4> corners = {{{{left_ - 1.0, top_ - 1.0}, kLeft | kAbove, 0.0},
                                      {{right_ + 1.0, top_ - 1.0}, kRight | kAbove, 0.0},
                                      {{left_ - 1.0, bottom_ + 1.0}, kLeft | kBelow, 0.0},
                                      {{right_ + 1.0, bottom_ + 1.0}, kRight | kBelow, 0.0}}};
    const QPointF start = toPixels_.map(from);
    const QPointF along = toPixels_.map(to) - start;
    for (Corner& corner : corners) {
        const QPointF away = corner.at - start;
        corner.distance = along.x() * away.y() - along.y() * away.x();
    }
    const auto [least, most] =
        std::minmax_element(corners.begin(), corners.end(),
                            [](const Corner& a, const Corner& b) { return a.distance < b.distance; });
    if (!(least->distance > 0.0 || most->distance < 0.0)) return std::nullopt;
    const Corner& passed = least->distance > 0.0 ? *least : *most;
    const QPointF beside = fromPixels_.map(passed.at);
    const bool isBeside = sidesOf(beside) == passed.sides;  // but for rounding
    if (!isBeside || (sidesOf(from) & passed.sides) == 0 || (sidesOf(to) & passed.sides) == 0)
        return std::nullopt;
    return beside;
}

RasterPoint OutlineTrimmer::rasterPoint(const QPointF& point) const {
    const QPointF p = toPixels_.map(point) * kRasterUnits;
    return {qRound(p.x()), qRound(p.y())};
}

// As it is where rounding moves the points between which it would be cut.
QLineF OutlineTrimmer::cut(const QLineF& line) const {
    const RasterLine whole = {rasterPoint(line.p1()), rasterPoint(line.p2())};
    const auto cut = cutToRows(whole, rows_);
    if (!cut) return line;
    const auto point = [&](size_t i) {
        const RasterPoint& at = cut->at(i);
        if (at == whole.at(i)) return i == 0 ? line.p1() : line.p2();
        return fromPixels_.map(QPointF(static_cast<double>(at.x), static_cast<double>(at.y)) / kRasterUnits);
    };
    const QLineF shorter(point(0), point(1));
    const bool isExact =
        rasterPoint(shorter.p1()) == cut->front() && rasterPoint(shorter.p2()) == cut->back();
    return isExact ? shorter : line;
}

template <typename AddCurve>
Outline OutlineTrimmer::trimmed(const OutlineView& outline, bool isArea, const AddCurve& addCurve) const {
    Outline trimmed;
    std::optional<SubPath> subPath;
    for (int i = 0; i < outline.count; ++i) {
        const QPointF& at = outline.points[i];
        const auto type = outline.types ? outline.types[i]
                          : i > 0       ? QPainterPath::LineToElement
                                        : QPainterPath::MoveToElement;
        if (type == QPainterPath::MoveToElement) {
            if (subPath) subPath->end();
            subPath.emplace(*this, isArea, at, trimmed);
        } else if (type == QPainterPath::LineToElement) {
            subPath->addLine(at);
        } else {
            addCurve({subPath->at(), at, outline.points[i + 1], outline.points[i + 2]}, *subPath);
            i += 2;
        }
    }
    if (subPath && outline.isClosed) subPath->addLine(outline.points[0]);
    if (subPath) subPath->end();
    return trimmed;
}

// The lines that Qt makes of a curve, as far as they are near.
void OutlineTrimmer::addLines(const CubicCurve& curve, int halvings, SubPath& to) const {
    if (const unsigned sides = sidesOf(curve); sides != 0) return to.pass(curve[3], sides);
    if (halvings == 0 || isFlat(curve, flatness_)) return to.addLine(curve[3]);
    for (const CubicCurve& half : halvesOf(curve)) addLines(half, halvings - 1, to);
}

// Whether the lines that Qt makes of a curve are near to it: lines between n points, as far apart in the
// curve's parameter, are no farther from it than an eighth of its second derivative, divided by n squared;
// and the derivative is at most six times the second difference of its control points.
bool OutlineTrimmer::isFineEnough(const CubicCurve& c) const {
    const auto bend = [&](const QPointF& a, const QPointF& b, const QPointF& d) {
        return (toPixels_.map(a) - 2.0 * toPixels_.map(b) + toPixels_.map(d)).manhattanLength();
    };
    const double bent = 0.75 * std::max(bend(c[0], c[1], c[2]), bend(c[1], c[2], c[3]));
    return bent <= kMostDeviation * kMostLines * kMostLines;
}

// Whether a curve is not near, and the way that it takes. Where it goes from one side to another, the point
// lies on both.
bool OutlineTrimmer::passesBy(const CubicCurve& curve, int halvings, SubPath* by) const {
    if (const unsigned sides = sidesOf(curve); sides != 0) {
        if (by) by->pass(curve[3], sides);
        return true;
    }
    if (halvings == 0) return false;
    const std::array<CubicCurve, 2> halves = halvesOf(curve);
    return passesBy(halves[0], halvings - 1, by) && passesBy(halves[1], halvings - 1, by);
}

}  // namespace tzsvg
