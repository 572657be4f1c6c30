#include "image/culling/OutlineStrips.h"

#include <algorithm>
#include <cmath>

namespace tzsvg {
namespace {

constexpr int kMostPieces = 16;  // of a curve

constexpr double kPiecesOfQt = 512;  // at most, however large a curve is

}  // namespace

bool isOfLines(const QPainterPath& path) {
    int points = 0;  // of the line that is being read
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element at = path.elementAt(i);
        if (at.isCurveTo()) return false;
        points = at.isMoveTo() ? 1 : points + 1;
        constexpr int kThereAndBack = 3;
        if (points > kThereAndBack) return false;
        if (points == kThereAndBack && QPointF(at) != QPointF(path.elementAt(i - 2))) return false;
    }
    return true;
}

bool isBox(const Reach& shape) {
    constexpr size_t kLinesOfBox = 6;  // a point, four lines, and what closes them
    return shape.isFilled && shape.strips.size() <= kLinesOfBox &&
           std::all_of(shape.strips.begin(), shape.strips.end(), [](const Strip& strip) {
               return strip.from.x() == strip.to.x() || strip.from.y() == strip.to.y();
           });
}

void OutlineStrips::append(const QPainterPath& path, bool closes, std::vector<Strip>& strips) const {
    const auto point = [&](int i) { return transform_.map(QPointF(path.elementAt(i))); };
    int start = 0;
    for (int i = 0; i < path.elementCount() && strips.size() <= most_; ++i) {
        if (path.elementAt(i).isMoveTo()) {
            if (closes && i > 0) strips.push_back({point(i - 1), point(start), radius_});
            strips.push_back({point(i), point(i), radius_});
            start = i;
        } else if (path.elementAt(i).isLineTo()) {
            strips.push_back({point(i - 1), point(i), radius_});
        } else {
            appendCurve({point(i - 1), point(i), point(i + 1), point(i + 2)}, strips);
            i += 2;
        }
    }
    if (closes) strips.push_back({point(path.elementCount() - 1), point(start), radius_});
}

// A curve as lines between points of it, and how far it may be from them.
void OutlineStrips::appendCurve(const std::array<QPointF, 4>& p, std::vector<Strip>& strips) const {
    const auto bend = [](const QPointF& a, const QPointF& b, const QPointF& c) {
        return std::hypot(a.x() - 2.0 * b.x() + c.x(), a.y() - 2.0 * b.y() + c.y());
    };
    const double bent = 0.75 * std::max(bend(p[0], p[1], p[2]), bend(p[1], p[2], p[3]));
    const double pieces = std::clamp(std::ceil(std::sqrt(bent / fine_)), 1.0, double{kMostPieces});
    const double deviation = bent / (pieces * pieces) + bent / (kPiecesOfQt * kPiecesOfQt);
    QPointF last = p[0];
    for (int i = 1; i <= static_cast<int>(pieces); ++i) {
        const double u = i / pieces;
        const double v = 1.0 - u;
        const QPointF next =
            v * v * v * p[0] + 3.0 * v * v * u * p[1] + 3.0 * v * u * u * p[2] + u * u * u * p[3];
        strips.push_back({last, next, radius_ + deviation});
        last = next;
    }
}

}  // namespace tzsvg
