// An outline without what a tile cannot see of it. Qt follows every line of an outline that is level with the
// tile, scan line by scan line, however far beside it, and once for each band of the tile; a deep tile of a
// simple drawing is nearly all that. Used by TrimmingEngine; pure.
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

#include "image/CubicCurve.h"
#include "image/trimming/LineCut.h"

namespace tzsvg {

// Of these Qt strokes each line alone, in another way than it strokes other paths.
bool isOfSingleLines(const QPainterPath& path);

// QPainterPath::lineTo() leaves out a line to where the path is, or almost is. This does not: such a line may
// have a join, and a point counts.
void addLine(const QPointF& end, QPainterPath& to);

class OutlineTrimmer {
  public:
    // `toPixels` maps the outline to pixels of the tile. `reach`: how far from the outline the paint may lie,
    // in the outline's units; 0 for an area.
    OutlineTrimmer(const QTransform& toPixels, QSize tile, double reach);

    struct Trimmed {
        QPainterPath path;
        bool isNear;  // some of the outline; an area without may still cover the tile
    };
    // To be filled; an empty path when it paints nothing on the tile. Of lines alone. Nothing when it is to
    // be drawn as it is: what lies too far, or is turned into nothing.
    std::optional<Trimmed> filled(const QPainterPath& path) const;
    // To be stroked; an empty path when nothing is near. Curves that are near stay whole. Nothing, too, for
    // single lines that are near, which Qt strokes each alone.
    std::optional<Trimmed> stroked(const QPainterPath& path) const;

  private:
    class SubPath;

    unsigned sidesOf(const QPointF& point) const;
    unsigned sidesOf(const CubicCurve& curve) const;
    bool isTellable(const QPainterPath& path) const;
    std::optional<QPointF> cornerPassed(const QPointF& from, const QPointF& to) const;
    RasterPoint rasterPoint(const QPointF& point) const;
    QLineF cut(const QLineF& line) const;
    bool isFineEnough(const CubicCurve& curve) const;
    template <typename AddCurve>
    Trimmed trimmed(const QPainterPath& path, bool isArea, const AddCurve& addCurve) const;
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
