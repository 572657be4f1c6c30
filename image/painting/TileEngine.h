// Qt's raster engine, without the work that a tile does not need: what outlines have beside the tile, and
// waking threads. Used by TileCanvas.
//
// It overrides what is called with outlines in the units of the drawing, after all that styles and gradients
// make of a shape, and hands them on, or others that paint the same pixels.
#pragma once

#include <private/qpaintengine_raster_p.h>

#include <optional>

#include "image/painting/OutlineTrimmer.h"

namespace tzsvg {

class TileEngine : public QRasterPaintEngine {
  public:
    // `tile` outlives the engine.
    explicit TileEngine(QImage& tile);

    bool hasTrimmed() const { return hasTrimmed_; }

    void fill(const QVectorPath& path, const QBrush& brush) override;
    void stroke(const QVectorPath& path, const QPen& pen) override;
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override;
    using QRasterPaintEngine::drawPolygon;
    void fillPolygon(const QPointF* points, int count, PolygonDrawMode mode) override;
    void drawRects(const QRectF* rects, int count) override;
    using QRasterPaintEngine::drawRects;

  private:
    QSpanData& setUp(const QBrush& brush);
    QRectF reachOf(const QVectorPath& path, double by) const;
    bool isWorthTrimming(const QRectF& reach) const;
    bool isSmall(const QVectorPath& path) const;
    bool isOutlined(const QVectorPath& path, const QPen& pen) const;
    std::optional<Outline> trimmed(const QVectorPath& path) const;
    std::optional<Outline> thinned(const QVectorPath& path, const QPen& pen) const;

    const QSize tile_;
    bool hasTrimmed_ = false;
    bool isStrokerOpen_ = false;  // or may be
};

}  // namespace tzsvg
