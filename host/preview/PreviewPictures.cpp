#include "host/preview/PreviewPictures.h"

#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

#include "host/preview/PreviewContent.h"
#include "host/preview/PreviewText.h"

namespace tzhost {
namespace {

constexpr int kDeepestClip = 4;          // clip paths of clip paths
constexpr double kLargestTile = 2048.0;  // pixels of a pattern's side

// From shares of a box to the box.
QTransform ofBox(const QRectF& box) {
    return {box.width(), 0, 0, box.height(), box.x(), box.y()};
}

QImage emptyPicture(const QSize& size) {
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    return picture;
}

}  // namespace

PreviewPictures::PreviewPictures(const PreviewDefinitions& definitions) : definitions_(definitions) {}

PreviewPictures::~PreviewPictures() = default;

bool PreviewPictures::hasClipPath(const QString& id) const {
    return !id.isEmpty() && definitions_.find(id, {"clipPath"}) >= 0;
}

QSvgRenderer& PreviewPictures::renderer(int element, bool asClipPath) {
    std::shared_ptr<QSvgRenderer>& kept = renderers_[element];
    if (!kept) kept = std::make_shared<QSvgRenderer>(definitionContent(definitions_, element, asClipPath));
    return *kept;
}

QImage PreviewPictures::clipMask(const QString& id, const PaintPlace& place, const QTransform& toPicture,
                                 const QRect& extent) {
    QImage mask = emptyPicture(extent.size());
    QString next = id;
    for (int depth = 0; depth < kDeepestClip && hasClipPath(next); ++depth) {
        const int element = definitions_.find(next, {"clipPath"});
        const auto& clipPath = definitions_.elements()[static_cast<size_t>(element)];
        const bool ofBounds = clipPath.attribute("clipPathUnits") == QLatin1String("objectBoundingBox");
        if (!ofBounds && !place.fromDrawing) break;
        const QTransform toPixels = (ofBounds ? ofBox(place.bounds) : *place.fromDrawing) * toPicture;
        QImage own = emptyPicture(extent.size());
        bool invertible = false;
        const QTransform back = toPixels.inverted(&invertible);
        if (invertible) {
            // The renderer lays its view box over the picture; a turned one is undone by the painter.
            const QRectF seen = back.mapRect(QRectF(extent));
            QPainter painter(&own);
            painter.setTransform(toPixels * QTransform::fromTranslate(-extent.x(), -extent.y()));
            QSvgRenderer& drawn = renderer(element, true);
            drawn.setViewBox(seen);
            drawn.render(&painter, seen);
        }
        if (depth == 0) {
            mask = own;
        } else {
            QPainter painter(&mask);
            painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
            painter.drawImage(0, 0, own);
        }
        next = readReference(clipPath.attribute("clip-path"));
        if (!hasClipPath(next)) return mask;
    }
    mask.fill(Qt::black);
    return mask;
}

QBrush PreviewPictures::patternBrush(const QString& id, const PaintPlace& place, double pixels,
                                     double opacity) {
    const int element = definitions_.find(id, {"pattern"});
    if (element < 0 || !place.fromDrawing) return {};
    const bool ofBounds = definitions_.inherited(element, "patternUnits") != QLatin1String("userSpaceOnUse");
    const auto part = [&](const char* name) {
        return readFraction(definitions_.inherited(element, name)).value_or(0.0);
    };
    QRectF tile(part("x"), part("y"), part("width"), part("height"));
    // All in the drawing's coordinates from here on.
    bool invertible = false;
    const QRectF bounds = place.fromDrawing->inverted(&invertible).mapRect(place.bounds);
    if (!invertible) return {};
    if (ofBounds) tile = ofBox(bounds).mapRect(tile);
    const QTransform toPainter =
        readTransform(definitions_.inherited(element, "patternTransform")) * *place.fromDrawing;
    const double scale = std::sqrt(std::abs(toPainter.determinant())) * pixels;
    if (!(tile.width() > 0 && tile.height() > 0 && scale > 0) ||
        !std::isfinite(scale * tile.width() * tile.height())) {
        return {};
    }
    const auto side = [&](double length) {
        return static_cast<int>(std::ceil(std::clamp(length * scale, 1.0, kLargestTile)));
    };

    QRectF content(QPointF(0, 0), tile.size());
    const std::vector<double> viewBox = readNumbers(definitions_.inherited(element, "viewBox"), 4);
    if (viewBox.size() == 4) {
        content = QRectF(viewBox[0], viewBox[1], viewBox[2], viewBox[3]);
    } else if (definitions_.inherited(element, "patternContentUnits") == QLatin1String("objectBoundingBox")) {
        content = QRectF(0, 0, tile.width() / bounds.width(), tile.height() / bounds.height());
    }
    // The one that has the content, of those that take theirs from each other.
    int source = element;
    for (int links = 0; links < 32 && source >= 0; ++links) {
        const auto& from = definitions_.elements()[static_cast<size_t>(source)];
        if (from.end > source + 1) break;
        source = definitions_.origin(source);
    }
    if (source < 0 || content.isEmpty()) return {};
    QImage picture = emptyPicture({side(tile.width()), side(tile.height())});
    QPainter painter(&picture);
    painter.setOpacity(opacity);
    QSvgRenderer& drawn = renderer(source, false);
    drawn.setViewBox(content);
    drawn.render(&painter, QRectF(picture.rect()));
    painter.end();

    QBrush brush(picture);
    brush.setTransform(
        QTransform::fromScale(tile.width() / picture.width(), tile.height() / picture.height()) *
        QTransform::fromTranslate(tile.x(), tile.y()) * toPainter);
    return brush;
}

}  // namespace tzhost
