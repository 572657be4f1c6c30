// The outline of a path as lines, each with how far from it the paint may lie. Used by ReachMeasuring; pure.
#pragma once

#include <QPainterPath>
#include <QTransform>
#include <array>
#include <vector>

#include "image/culling/PartReach.h"

namespace tzsvg {

// Whether a path is of single lines, there and back at most: filled, it colours nothing but what rounding
// leaves beside the lines.
bool isOfLines(const QPainterPath& path);

// Whether an outline is its own box, which then says all.
bool isBox(const Reach& shape);

class OutlineStrips {
  public:
    // Of paths that are transformed, with strokes of that radius after it. Lines stand for curves that are no
    // farther from them than `fine`, if a few lines do. Not much more than `most` strips come of a path.
    OutlineStrips(const QTransform& transform, double radius, double fine, size_t most)
        : transform_(transform), radius_(radius), fine_(fine), most_(most) {}

    // Adds the strips of a path, with the lines that close its sub-paths when it `closes`.
    void append(const QPainterPath& path, bool closes, std::vector<Strip>& strips) const;

  private:
    void appendCurve(const std::array<QPointF, 4>& p, std::vector<Strip>& strips) const;

    QTransform transform_;
    double radius_;
    double fine_;
    size_t most_;
};

}  // namespace tzsvg
