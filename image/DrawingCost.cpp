#include "image/DrawingCost.h"

#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

#include "image/PaintProbe.h"
#include "svg/guard/DocumentGuard.h"

namespace tzsvg {
namespace {

// The painter gives up on dashes that are that much shorter than a line.
constexpr double kMostDashesOfLine = 10000.0;

// How many dashes a path gets when a dash and its gap take `period`, on average: never fewer than the painter
// makes. A curve is no longer than the lines between its control points.
double dashesOf(const QPainterPath& path, double period) {
    double dashes = 0.0;
    for (int i = 1; i < path.elementCount(); ++i) {
        const QPainterPath::Element to = path.elementAt(i);
        if (to.isMoveTo()) continue;
        const QPainterPath::Element from = path.elementAt(i - 1);
        const double ofLine = std::hypot(to.x - from.x, to.y - from.y) / period;
        dashes += to.isLineTo() && ofLine > kMostDashesOfLine ? 1.0 : ofLine;
    }
    return dashes;
}

// QPainter draws shapes with such a gradient into a picture first, for any device but its own.
bool hasFocusOutside(const QBrush& brush) {
    if (brush.style() != Qt::RadialGradientPattern) return false;
    const auto& gradient = static_cast<const QRadialGradient&>(*brush.gradient());
    const QPointF toFocus = gradient.focalPoint() - gradient.center();
    return gradient.focalRadius() != 0.0 ||
           QPointF::dotProduct(toFocus, toFocus) > gradient.radius() * gradient.radius();
}

class SurveyingEngine : public ProbeEngine {
  public:
    PaintSurvey survey() const { return {longest_ <= kMaxDashesOfPath && all_ <= kMaxDashes, isTold_}; }

    void updateState(const QPaintEngineState& of) override {
        isTold_ = isTold_ && !hasFocusOutside(of.brush()) && !hasFocusOutside(of.pen().brush());
    }
    void drawPath(const QPainterPath& path) override {
        if (isDashed()) countDashes(path);
    }
    // Most need no path.
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
        if (isDashed()) ProbeEngine::drawPolygon(points, count, mode);
    }
    void drawRects(const QRectF* rects, int count) override {
        if (isDashed()) ProbeEngine::drawRects(rects, count);
    }

  private:
    static constexpr double kTiny = 1e-300;

    bool isDashed() const {
        return state->pen().style() != Qt::NoPen && state->pen().style() != Qt::SolidLine;
    }

    void countDashes(const QPainterPath& path) {
        const QPen& pen = state->pen();
        QVector<qreal> pattern = pen.dashPattern();
        // The painter reads 32 lengths at most.
        constexpr int kMostLengths = 32;
        if (pattern.size() > kMostLengths) pattern.resize(kMostLengths);
        if (pattern.size() < 2) return;
        double sum = 0.0;
        for (const double length : pattern) sum += std::max(length, 0.0);
        if (pen.widthF() > 0.0) sum *= pen.widthF();
        const double period = 2.0 * sum / static_cast<double>(pattern.size());
        const double dashes =
            dashesOf(pen.isCosmetic() ? state->transform().map(path) : path, std::max(period, kTiny));
        longest_ = std::max(longest_, dashes);
        all_ += dashes;
    }

    double longest_ = 0.0;
    double all_ = 0.0;
    bool isTold_ = true;
};

}  // namespace

PaintSurvey surveyPaint(QSvgRenderer& renderer) {
    SurveyingEngine engine;
    ProbeDevice device(renderer.defaultSize(), engine);
    QPainter painter(&device);
    renderer.render(&painter);
    painter.end();
    return engine.survey();
}

}  // namespace tzsvg
