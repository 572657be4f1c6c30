// Where the shapes of a drawing may paint, in the coordinates of its root, and which of them reach an area.
// Never less than what is painted, but for the pixel that smooth edges blur into. Filled by ReachMeasuring;
// asked by CellRenderers. Pure.
#pragma once

#include <QPointF>
#include <QRectF>
#include <cstdint>
#include <limits>
#include <vector>

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

// A line, and how far from it the paint may lie.
struct Strip {
    QPointF from;
    QPointF to;
    double radius;

    bool touches(const Box& area) const;
};

// What one shape may paint.
struct Reach {
    Box box;
    std::vector<Strip> strips;  // when not empty, all lies in them: a long line's box says little
};

class PartReach {
  public:
    explicit PartReach(const QPointF& origin) : origin_(origin) {}

    // Parts are added in order.
    void add(uint32_t part, const Reach& reach);

    // The parts that may paint in the area, in order.
    std::vector<uint32_t> reaching(const Box& area) const;

  private:
    // Relative to the origin, rounded outwards.
    struct SmallBox {
        float left, top, right, bottom;
    };
    struct Strips {
        uint32_t shape;
        uint32_t first;
        uint32_t past;
    };

    bool stripsTouch(uint32_t shape, const Box& area) const;

    QPointF origin_;
    std::vector<SmallBox> boxes_;
    std::vector<uint32_t> parts_;
    std::vector<Strips> stripsOf_;  // by shape
    std::vector<Strip> strips_;
};

}  // namespace tzsvg
