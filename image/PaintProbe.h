// A paint device on which nothing is drawn: an engine looks at what the painter is told to draw. Used by
// DrawingCost and ReachProbe, each with an engine of its own.
#pragma once

#include <QPaintDevice>
#include <QPaintEngine>

namespace tzsvg {

// Takes part in everything and does nothing. Paths come as they were given, with the transform in the state.
class ProbeEngine : public QPaintEngine {
  public:
    ProbeEngine() : QPaintEngine(AllFeatures) {}

    bool begin(QPaintDevice* /*device*/) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState& /*state*/) override {}
    void drawPixmap(const QRectF& /*to*/, const QPixmap& /*pixmap*/, const QRectF& /*from*/) override {}
    void drawImage(const QRectF& /*to*/, const QImage& /*image*/, const QRectF& /*from*/,
                   Qt::ImageConversionFlags /*flags*/) override {}
    void drawTextItem(const QPointF& /*at*/, const QTextItem& /*text*/) override {}
    void drawPath(const QPainterPath& path) override = 0;
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override;
};

class ProbeDevice : public QPaintDevice {
  public:
    ProbeDevice(QSize size, ProbeEngine& engine) : size_(size), engine_(engine) {}

    QPaintEngine* paintEngine() const override { return &engine_; }

  protected:
    int metric(PaintDeviceMetric metric) const override;

  private:
    QSize size_;
    ProbeEngine& engine_;
};

}  // namespace tzsvg
