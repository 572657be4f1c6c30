// Where the shapes of a drawing may paint, in the coordinates of its root, and which of them reach an area.
// Never less than what is painted, but for the pixel that smooth edges blur into. Filled by ReachMeasuring;
// asked by CellRenderers. Pure.
#pragma once

#include <QPointF>
#include <QRectF>
#include <cstdint>
#include <limits>
#include <vector>

#include "image/culling/BoxGrid.h"

namespace tzsvg {

// An area by its edges; empty until a point is added. QRectF takes a line for nothing.
struct Box {
    double left = std::numeric_limits<double>::infinity();
    double top = std::numeric_limits<double>::infinity();
    double right = -std::numeric_limits<double>::infinity();
    double bottom = -std::numeric_limits<double>::infinity();

    static Box everywhere();
    static Box of(const QRectF& rect) { return {rect.left(), rect.top(), rect.right(), rect.bottom()}; }
    static Box of(const QPointF& center, double radius);

    void add(const Box& other);
    Box grown(double by) const { return {left - by, top - by, right + by, bottom + by}; }
    bool isFinite() const;
    bool contains(const Box& other) const {
        return left <= other.left && top <= other.top && right >= other.right && bottom >= other.bottom;
    }
    bool touches(const Box& other) const {
        return left <= other.right && other.left <= right && top <= other.bottom && other.top <= bottom;
    }
};

// Where what is painted may colour pixels of a tile that shows `shown` in that many pixels: smooth edges take
// a pixel outside a shape's own bounds, and so do lines that are thinner than one.
Box paintedAround(const QRectF& shown, const QSizeF& pixels);

class PartReach {
  public:
    explicit PartReach(const QPointF& origin) : origin_(origin) {}

    // Parts are added in order, all before the first question.
    void add(uint32_t part, const Box& reach);
    void finish(double side);  // that of a square at the origin that holds most of them

    // The numbers of the parts that may paint in the area, in order.
    using Numbers = std::vector<uint32_t>;
    Numbers reaching(const Box& area) const;

    // Those of `among`, which reach a larger area.
    Numbers reaching(const Box& area, const Numbers& among) const;

    // The parts of these numbers.
    std::vector<uint32_t> partsOf(const Numbers& numbers) const;

  private:
    Box fromOrigin(const Box& area) const;

    QPointF origin_;
    std::vector<SmallBox> boxes_;  // relative to the origin, rounded outwards
    BoxGrid grid_;
    std::vector<uint32_t> parts_;
};

}  // namespace tzsvg
