// Tested by tests/text/PathDataTest.cpp.
#include "svg/text/Arc.h"

#include <QTransform>
#include <cmath>

#include "svg/text/PathData.h"

namespace tzsvg {
namespace {

constexpr double kFullTurn = 6.283185307179586;
constexpr double kLargestSegment =
    1.571796326842394;                        // a quarter turn and a little, single precision widened
constexpr float kControlFactor = 1.3333334F;  // four thirds

float root(double value) {
    return std::sqrt(static_cast<float>(value));
}

double angleOf(double x, double y) {
    return std::atan2(static_cast<float>(y), static_cast<float>(x));
}

// The arc on the unit circle: its centre, first angle and signed sweep, in radians.
struct UnitArc {
    QPointF centre;
    double from;
    double sweep;
};

UnitArc onUnitCircle(const QPointF& p0, const QPointF& p1, bool large, bool sweep) {
    const double dx = p1.x() - p0.x();
    const double dy = p1.y() - p0.y();
    double square = 1.0 / (dx * dx + dy * dy) - 0.25;
    if (square < 0.0) square = 0.0;
    const double s = sweep != large ? root(square) : -root(square);
    const QPointF centre(0.5 * (p0.x() + p1.x()) - s * dy, 0.5 * (p0.y() + p1.y()) + s * dx);
    const double from = angleOf(p0.x() - centre.x(), p0.y() - centre.y());
    const double to = angleOf(p1.x() - centre.x(), p1.y() - centre.y());
    double turn = to - from;
    if (turn < 0.0 && sweep) {
        turn += kFullTurn;
    } else if (turn > 0.0 && !sweep) {
        turn -= kFullTurn;
    }
    return {centre, from, turn};
}

// Appends one cubic between two angles. False when its control distance is not finite or a point does not
// fit.
bool appendSegment(const UnitArc& arc, double from, double to, const QTransform& toUser, QPainterPath& path) {
    const float t = std::tan(static_cast<float>((to - from) * 0.25)) * kControlFactor;
    if (!std::isfinite(t)) return false;
    const double sinFrom = std::sin(static_cast<float>(from));
    const double cosFrom = std::cos(static_cast<float>(from));
    const double sinTo = std::sin(static_cast<float>(to));
    const double cosTo = std::cos(static_cast<float>(to));
    const QPointF end = QPointF(cosTo, sinTo) + arc.centre;
    const QPointF control1 = QPointF(cosFrom - t * sinFrom, sinFrom + t * cosFrom) + arc.centre;
    const QPointF control2 = end + QPointF(t * sinTo, -t * cosTo);
    const QPointF q1 = toUser.map(control1);
    const QPointF q2 = toUser.map(control2);
    const QPointF q3 = toUser.map(end);
    if (!fitsPainterPath(q1) || !fitsPainterPath(q2) || !fitsPainterPath(q3)) return false;
    path.cubicTo(q1, q2, q3);
    return true;
}

}  // namespace

bool appendArc(const QPointF& start, const Arc& arc, QPainterPath& path) {
    double rx = std::abs(arc.rx);
    double ry = std::abs(arc.ry);
    if (start.x() == arc.end.x() && start.y() == arc.end.y()) return true;
    if (rx == 0.0 || ry == 0.0) {
        path.lineTo(arc.end);
        return true;
    }

    const QPointF half = QTransform().rotate(arc.rotation, Qt::ZAxis).inverted().map((start - arc.end) * 0.5);
    const double lambda = half.x() * half.x() / (rx * rx) + half.y() * half.y() / (ry * ry);
    if (lambda > 1.0) {
        const double factor = root(lambda);
        rx *= factor;
        ry *= factor;
    }

    const QTransform toUnit = QTransform().scale(1.0 / rx, 1.0 / ry).rotate(-arc.rotation, Qt::ZAxis);
    const QTransform toUser = QTransform().rotate(arc.rotation, Qt::ZAxis).scale(rx, ry);
    const UnitArc unit = onUnitCircle(toUnit.map(start), toUnit.map(arc.end), arc.large, arc.sweep);

    const float segments = std::ceil(std::abs(static_cast<float>(unit.sweep / kLargestSegment)));
    if (!(segments >= 1.0F)) return true;  // also when nothing finite came out
    const int count = static_cast<int>(segments);
    bool finite = true;
    for (int i = 0; i < count; ++i) {
        const double from = unit.from + i * unit.sweep / count;
        const double to = unit.from + (i + 1) * unit.sweep / count;
        finite = appendSegment(unit, from, to, toUser, path) && finite;
    }
    return finite;
}

}  // namespace tzsvg
