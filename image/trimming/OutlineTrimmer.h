// An outline without what a tile cannot see of it. Qt follows every line of an outline that is level with the
// tile, scan line by scan line, however far beside it, and once for each band of the tile; a deep tile of a
// simple drawing is nearly all that. Used by TrimmingEngine; pure.
//
// The pixels stay the same. Qt's rasterizer adds up, for each scan line, by how much the lines left of the
// tile go down, in whole numbers; lines right of it, above or below count for nothing. So pieces that lie on
// one side of the tile may be exchanged for any others there, from the same point to the same point, while
// each piece that comes near is handed on as it was: Qt makes the same lines of it, wherever the others are.
#pragma once

#include <QPainterPath>
#include <QSize>
#include <QTransform>
#include <array>
#include <optional>
#include <vector>

namespace tzsvg {

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
    // To be filled; an empty path when it paints nothing on the tile. Nothing when it is to be drawn as it
    // is: what lies too far, or is turned into nothing.
    std::optional<Trimmed> filled(const QPainterPath& path) const;
    // To be stroked; an empty path when nothing is near. Nothing, too, for single lines, which Qt strokes
    // each alone.
    std::optional<Trimmed> stroked(const QPainterPath& path) const;

  private:
    using Curve = std::array<QPointF, 4>;
    struct Piece {
        Curve points;  // of a line all but the first are its end
        bool isCurve;
        unsigned sides;  // of the tile on which all of it lies
        bool isNear;
    };
    using Pieces = std::vector<Piece>;
    class Run;

    unsigned sidesOf(const QPointF& point) const;
    unsigned sidesOf(const Curve& curve) const;
    bool isTellable(const QPainterPath& path) const;
    std::vector<Pieces> subPathsOf(const QPainterPath& path, bool closes) const;
    bool isFineEnough(const Curve& curve) const;
    bool passesBy(const Curve& curve, int halvings, Run* run) const;
    bool markNear(Pieces& pieces) const;
    bool isBeside(const Pieces& pieces) const;
    void append(const Pieces& pieces, QPainterPath& to) const;

    QTransform toPixels_;
    QTransform fromPixels_;
    double left_;
    double top_;
    double right_;
    double bottom_;
};

}  // namespace tzsvg
