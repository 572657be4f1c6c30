#include "host/preview/definitions/PreviewGradients.h"

#include <QColor>
#include <algorithm>
#include <cmath>
#include <memory>

#include "host/preview/PreviewText.h"

namespace tzhost {
namespace {

// Qt takes time in proportion to their square.
constexpr int kMostStops = 1024;

// A coordinate of a gradient: a number, or a percentage as its part of one.
double coordinate(const PreviewDefinitions& definitions, int element, const char* name, double absent) {
    return readFraction(definitions.inherited(element, name)).value_or(absent);
}

// A property of a stop, from its style or its attribute.
QString property(const PreviewDefinitions::Element& stop, const char* name) {
    const QString styled = styleProperty(stop.attribute("style"), name);
    return styled.isEmpty() ? stop.attribute(name) : styled;
}

// Those of the nearest gradient that has any.
QGradientStops stops(const PreviewDefinitions& definitions, int element, double opacity) {
    QGradientStops found;
    for (int links = 0; element >= 0 && links < 32 && found.isEmpty(); ++links) {
        const int end = definitions.elements()[static_cast<size_t>(element)].end;
        double last = 0.0;
        int alike = 0;  // stops at that place
        for (int i = element + 1; i < end && found.size() < kMostStops; ++i) {
            const auto& stop = definitions.elements()[static_cast<size_t>(i)];
            if (stop.name != QLatin1String("stop")) continue;
            QColor colour(property(stop, "stop-color"));
            if (!colour.isValid()) colour = Qt::black;
            colour.setAlphaF(colour.alphaF() * readOpacity(property(stop, "stop-opacity")) * opacity);
            // A stop stands nowhere before the one it follows. Of several at one place the first and the last
            // are seen; Qt wants them apart.
            constexpr double kApart = 1e-6;
            const double offset = std::clamp(readFraction(stop.attribute("offset")).value_or(0.0), 0.0, 1.0);
            if (found.isEmpty() || offset > last) {
                last = offset;
                alike = 1;
            } else if (++alike == 2) {
                found.back().first = std::max(0.0, last - kApart);
            } else {
                found.pop_back();
            }
            found.push_back({last, colour});
        }
        element = definitions.origin(element);
    }
    return found;
}

std::unique_ptr<QGradient> linear(const PreviewDefinitions& definitions, int element, bool directionOnly) {
    QPointF from(coordinate(definitions, element, "x1", 0), coordinate(definitions, element, "y1", 0));
    QPointF to(coordinate(definitions, element, "x2", 1), coordinate(definitions, element, "y2", 0));
    if (directionOnly) {
        const QPointF along = to - from;
        const double length = std::max(std::abs(along.x()), std::abs(along.y()));
        if (length > 0) {
            from = QPointF(along.x() < 0 ? 1 : 0, along.y() < 0 ? 1 : 0);
            to = from + along / length;
        }
    }
    return std::make_unique<QLinearGradient>(from, to);
}

std::unique_ptr<QGradient> radial(const PreviewDefinitions& definitions, int element, bool directionOnly) {
    if (directionOnly) return std::make_unique<QRadialGradient>(QPointF(0.5, 0.5), 0.5);
    const QPointF centre(coordinate(definitions, element, "cx", 0.5),
                         coordinate(definitions, element, "cy", 0.5));
    const QPointF focus(coordinate(definitions, element, "fx", centre.x()),
                        coordinate(definitions, element, "fy", centre.y()));
    return std::make_unique<QRadialGradient>(centre, coordinate(definitions, element, "r", 0.5), focus);
}

}  // namespace

QBrush gradientBrush(const PreviewDefinitions& definitions, const QString& id, const PaintPlace& place,
                     double opacity) {
    const int element = definitions.find(id, {"linearGradient", "radialGradient"});
    if (element < 0) return {};
    const bool inDrawing = definitions.inherited(element, "gradientUnits") == QLatin1String("userSpaceOnUse");
    const bool directionOnly = inDrawing && !place.fromDrawing;
    const bool isLinear =
        definitions.elements()[static_cast<size_t>(element)].name == QLatin1String("linearGradient");
    const std::unique_ptr<QGradient> gradient =
        isLinear ? linear(definitions, element, directionOnly) : radial(definitions, element, directionOnly);
    const QString spread = definitions.inherited(element, "spreadMethod");
    if (spread == QLatin1String("reflect")) gradient->setSpread(QGradient::ReflectSpread);
    if (spread == QLatin1String("repeat")) gradient->setSpread(QGradient::RepeatSpread);
    // Colours and opacities each by themselves, as SVG has it.
    gradient->setInterpolationMode(QGradient::ComponentInterpolation);
    gradient->setStops(stops(definitions, element, opacity));

    const QRectF& box = place.bounds;
    QTransform toPlace(box.width(), 0, 0, box.height(), box.x(), box.y());
    if (inDrawing && !directionOnly) toPlace = *place.fromDrawing;
    QBrush brush(*gradient);
    const QTransform own =
        directionOnly ? QTransform() : readTransform(definitions.inherited(element, "gradientTransform"));
    brush.setTransform(own * toPlace);
    return brush;
}

}  // namespace tzhost
