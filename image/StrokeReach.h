// How far from a path its stroke may lie. Used by ReachProbe and TileEngine; pure.
#pragma once

#include <QPainterPath>
#include <QPen>
#include <QTransform>

namespace tzsvg {

// No length is enlarged more than that.
double largestScale(const QTransform& t);

// In the path's own units; of a path for which strokeIsTold().
double strokeRadius(const QPen& pen, bool isOneLine);

// Whether the stroke lies within its radius. Not where a curve turns back: Qt (QBezier::shifted()) moves a
// control point outwards by half the width, divided by the cosine of half the turn, and after some tries
// takes what comes of it, be it a thousand widths away. Dashed or not: for dashes that are too small it
// strokes the curve.
bool strokeIsTold(const QPainterPath& path);

}  // namespace tzsvg
