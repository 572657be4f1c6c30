// Cubic curves, cut and drawn with the same numbers as Qt 6.4 does it. Used by StrokeReach and
// OutlineTrimmer; pure.
#pragma once

#include <QPointF>
#include <QTransform>
#include <array>

namespace tzsvg {

using CubicCurve = std::array<QPointF, 4>;  // start, two control points, end

// As QBezier::split().
std::array<CubicCurve, 2> halvesOf(const CubicCurve& curve);

// Qt draws a curve as lines: it halves it until its parts are flat, but no more than that often.
constexpr int kMostHalvings = 9;

// As QBezier::addToPolygon(). `flatness`: see below.
bool isFlat(const CubicCurve& curve, double flatness);

// How many pixels a unit is to Qt (qt_scaleForTransform()).
double scaleOf(const QTransform& toPixels);

// A quarter of a pixel in the curve's units, as QOutlineMapper has it.
double flatnessOf(const QTransform& toPixels);

}  // namespace tzsvg
