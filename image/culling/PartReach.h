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
    double largerSide() const { return right - left > bottom - top ? right - left : bottom - top; }
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

bool lineTouches(const QPointF& from, const QPointF& to, const Box& area);

// A line of closed outlines crosses the line from a point to the right downwards (1), upwards (-1) or not:
// the sum says how often they go round the point.
int roundOf(const QPointF& from, const QPointF& to, const QPointF& point);

// A line, and how far from it the paint may lie.
struct Strip {
    QPointF from;
    QPointF to;
    double radius;
};

// What one shape may paint.
struct Reach {
    Box box;
    std::vector<Strip> strips;  // when not empty, all lies in them: a long line's box says little
    bool isFilled = false;      // or within them: then they are closed outlines
};

class PartReach {
  public:
    explicit PartReach(const QPointF& origin) : origin_(origin) {}

    // Parts are added in order, all before the first question.
    void add(uint32_t part, const Reach& reach);
    void finish(double side);  // that of a square at the origin that holds most of them

    // The numbers of the parts that may paint in the area, in order.
    using Numbers = std::vector<uint32_t>;
    Numbers reaching(const Box& area) const;

    // Those of `among`, which reach a larger area.
    Numbers reaching(const Box& area, const Numbers& among) const;

    // How many of `among` have a box that touches the area.
    size_t boxesTouching(const Box& area, const Numbers& among) const;

    // The parts of these numbers.
    std::vector<uint32_t> partsOf(const Numbers& numbers) const;

  private:
    struct SmallStrip {
        float fromX, fromY, toX, toY;
        float radius;  // larger by what the others were rounded
    };
    struct Strips {
        uint32_t number;
        uint32_t first;
        uint32_t past;
        bool isFilled;
    };

    Box fromOrigin(const Box& area) const;
    bool stripsTouch(uint32_t number, const Box& area) const;

    QPointF origin_;
    std::vector<SmallBox> boxes_;  // relative to the origin, rounded outwards
    BoxGrid grid_;
    std::vector<uint32_t> parts_;
    std::vector<Strips> stripsOf_;  // by number
    std::vector<SmallStrip> strips_;
};

}  // namespace tzsvg
