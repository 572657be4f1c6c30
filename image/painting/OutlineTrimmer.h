// An outline without what a tile cannot see of it. Qt follows every line of an outline that is level with the
// tile, scan line by scan line, however far beside it, and once for each band of the tile; a deep tile of a
// simple drawing is nearly all that. Used by TileEngine; pure.
//
// The pixels stay the same. Qt's rasterizer adds up, for each scan line, by how much the lines left of the
// tile go down, in whole numbers; lines right of it, above or below count for nothing. So pieces that lie on
// one side of the tile may be exchanged for any others there, from the same point to the same point, while
// each line that comes near is handed on as it was. Of a curve that comes near these are the lines that Qt
// makes of it, computed here the same way (QBezier::addToPolygon() of Qt 6.4), without those that do not. A
// long line through the tile is cut (LineCut.h).
#pragma once

#include <QLineF>
#include <QPainterPath>
#include <QSize>
#include <QTransform>
#include <optional>
#include <vector>

#include "image/CubicCurve.h"
#include "image/painting/LineCut.h"

namespace tzsvg {

// The points of an outline, and what each ends, as Qt's paint engines are handed them: QPainterPath would
// leave out lines that end almost where they begin.
struct Outline {
    std::vector<QPointF> points;
    std::vector<QPainterPath::ElementType> types;

    bool isEmpty() const { return points.empty(); }
    void moveTo(const QPointF& point);
    void lineTo(const QPointF& point);
    void cubicTo(const QPointF& control1, const QPointF& control2, const QPointF& end);
};

// Another's points.
struct OutlineView {
    const QPointF* points;
    const QPainterPath::ElementType* types;  // null: it is one sub-path of lines
    int count;
    bool isClosed;  // by one line more
};

class OutlineTrimmer {
  public:
    // `toPixels` maps the outline to pixels of the tile. `reach`: how far from the outline the paint may lie,
    // in the outline's units; 0 for an area.
    OutlineTrimmer(const QTransform& toPixels, QSize tile, double reach);

    // To be filled; empty when it paints nothing on the tile. Of lines alone. Nothing when it is to be drawn
    // as it is: what lies too far, or is turned into nothing.
    std::optional<Outline> filled(const OutlineView& outline) const;
    // To be stroked; empty when nothing is near. Curves that are near stay whole.
    std::optional<Outline> stroked(const OutlineView& outline) const;

  private:
    class SubPath;

    unsigned sidesOf(const QPointF& point) const;
    unsigned sidesOf(const CubicCurve& curve) const;
    bool isTellable(const OutlineView& outline) const;
    std::optional<QPointF> cornerPassed(const QPointF& from, const QPointF& to) const;
    RasterPoint rasterPoint(const QPointF& point) const;
    QLineF cut(const QLineF& line) const;
    bool isFineEnough(const CubicCurve& curve) const;
    template <typename AddCurve>
    Outline trimmed(const OutlineView& outline, bool isArea, const AddCurve& addCurve) const;
    void addLines(const CubicCurve& curve, int halvings, SubPath& to) const;
    bool passesBy(const CubicCurve& curve, int halvings, SubPath* by) const;

    QTransform toPixels_;
    int rows_;
    QTransform fromPixels_;
    double flatness_;
    double left_;
    double top_;
    double right_;
    double bottom_;
};

}  // namespace tzsvg
