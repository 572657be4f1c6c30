// Where the edges of all that a drawing paints lie. A tile that none of them touches is of one colour: every
// area covers all of it or nothing. One row of it then tells the rest, which Qt draws much more quickly,
// since it follows outlines scan line by scan line, however far they are. For drawings that paint plain areas
// alone (PaintSurvey). Used by RendererPool.
#pragma once

#include <QtGui/qrgb.h>

#include <QRectF>
#include <optional>
#include <vector>

#include "image/culling/PartReach.h"

class QSvgRenderer;

namespace tzsvg {

class PaintedEdges {
  public:
    // `area`: what can be seen of the drawing, in its view box's units. Changes the renderer's view box.
    PaintedEdges(QSvgRenderer& renderer, const QRectF& area);

    // Whether an area is sure to be of one colour; never when the edges cannot be told, or are too many to be
    // looked through for every tile.
    bool leaveAlike(const Box& area) const;

    // The colour of an area, if it lies in or near one of those of which it was learnt last.
    std::optional<QRgb> learntColour(const Box& area) const;
    void learn(const Box& area, QRgb colour);

    // What is painted at once, in order.
    struct Paint {
        size_t firstEdge;
        size_t pastEdges;
        bool isOpaque;  // hides what is under it, where its edges go round
        Qt::FillRule rule;
    };

  private:
    bool covers(const Paint& paint, const Box& area) const;

    bool areTold_ = false;
    std::vector<Strip> edges_;
    std::vector<Paint> paints_;
    struct Learnt {
        Box area;
        QRgb colour;
    };
    std::vector<Learnt> learnt_;
    size_t oldest_ = 0;  // of them, once there are many
};

}  // namespace tzsvg
