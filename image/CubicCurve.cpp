#include "image/CubicCurve.h"

#include <algorithm>
#include <cmath>

namespace tzsvg {

std::array<CubicCurve, 2> halvesOf(const CubicCurve& c) {
    const auto middle = [](const QPointF& a, const QPointF& b) { return (a + b) * 0.5; };
    const QPointF first = middle(c[0], c[1]);
    const QPointF second = middle(c[1], c[2]);
    const QPointF third = middle(c[2], c[3]);
    const QPointF before = middle(first, second);
    const QPointF after = middle(second, third);
    const QPointF half = middle(before, after);
    return {{{c[0], first, before, half}, {half, after, third, c[3]}}};
}

bool isFlat(const CubicCurve& c, double flatness) {
    const QPointF chord = c[3] - c[0];
    const QPointF first = c[0] - c[1];
    const QPointF second = c[0] - c[2];
    const double length = std::abs(chord.x()) + std::abs(chord.y());
    if (length <= 1.0) {
        return std::abs(first.x()) + std::abs(first.y()) + std::abs(second.x()) + std::abs(second.y()) <
               flatness;
    }
    return std::abs(chord.x() * first.y() - chord.y() * first.x()) +
               std::abs(chord.x() * second.y() - chord.y() * second.x()) <
           flatness * length;
}

double scaleOf(const QTransform& t) {
    if (t.type() <= QTransform::TxTranslate) return 1.0;
    if (t.type() == QTransform::TxScale) return std::max(std::abs(t.m11()), std::abs(t.m22()));
    const auto sumOfSquares = [](double a, double b) { return a * a + b * b; };
    const std::array<double, 2> columns = {sumOfSquares(t.m11(), t.m21()), sumOfSquares(t.m12(), t.m22())};
    const std::array<double, 2> rows = {sumOfSquares(t.m11(), t.m12()), sumOfSquares(t.m21(), t.m22())};
    const bool isOfColumns = std::abs(columns[0] - columns[1]) > std::abs(rows[0] - rows[1]);
    const auto& squares = isOfColumns ? columns : rows;
    return std::sqrt(std::max(squares[0], squares[1]));
}

double flatnessOf(const QTransform& toPixels) {
    constexpr double kQuarter = 0.25;
    const double scale = scaleOf(toPixels);
    return scale == 0.0 ? kQuarter : kQuarter / scale;
}

}  // namespace tzsvg
