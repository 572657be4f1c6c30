// A probe that measures the reach of each path it is told to paint, in the coordinates of the drawing's root.
// Used by ReachMeasuring.
#pragma once

#include "image/PaintProbe.h"
#include "image/culling/PartReach.h"

namespace tzsvg {

class ReachProbe : public ProbeEngine {
  public:
    void drawPath(const QPainterPath& path) override;
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override;
    // The defaults of these leave out what has no extent.
    void drawRects(const QRectF* rects, int count) override;
    void drawEllipse(const QRectF& rect) override;
    void drawLines(const QLineF* lines, int count) override;
    void drawPoints(const QPointF* points, int count) override;
    // No path is drawn as any of these.
    void drawPixmap(const QRectF& to, const QPixmap& pixmap, const QRectF& from) override;
    void drawImage(const QRectF& to, const QImage& image, const QRectF& from,
                   Qt::ImageConversionFlags flags) override;
    void drawTextItem(const QPointF& at, const QTextItem& text) override;

  protected:
    // What lies farther out than `largest` cannot be measured.
    explicit ReachProbe(double largest) : largest_(largest) {}

    bool isMeasurable(const QTransform& t, const QPointF& p) const;

    // Adds what the painter would colour now, filling the path or not; false when that cannot be told.
    bool measure(const QPainterPath& path, bool fills, Box& reach) const;

  private:
    // What is told of every path, with the painter's state.
    virtual void add(const QPainterPath& path, bool fills) = 0;
    virtual void addUnknown() = 0;

    bool addBox(const QPainterPath& path, const QTransform& t, double radius, Box& box) const;

    const double largest_;
};

}  // namespace tzsvg
