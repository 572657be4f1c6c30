#include "host/preview/definitions/PreviewPictures.h"

#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

#include "host/preview/PreviewText.h"
#include "host/preview/definitions/PreviewContent.h"

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

// What is in the element, in the part of the picture.
QImage PreviewPictures::content(int element, bool asClipPath, const QTransform& toPixels, const QRect& part) {
    QImage picture = emptyPicture(part.size());
    bool invertible = false;
    const QTransform back = toPixels.inverted(&invertible);
    if (!invertible) return picture;
    // The renderer lays its view box over the picture; the painter takes it to where it was seen.
    const QRectF seen = back.mapRect(QRectF(part));
    QPainter painter(&picture);
    painter.setTransform(toPixels * QTransform::fromTranslate(-part.x(), -part.y()));
    QSvgRenderer& drawn = renderer(element, asClipPath);
    drawn.setViewBox(seen);
    drawn.render(&painter, seen);
    return picture;
}

QImage PreviewPictures::clipped(const QString& id, const PaintPlace& place, const QTransform& toPicture,
                                const QImage& layer, const QRect& part) {
    QImage left = layer;
    QString next = id;
    for (int depth = 0; depth < kDeepestClip && hasClipPath(next); ++depth) {
        const int element = definitions_.find(next, {"clipPath"});
        const auto& clipPath = definitions_.elements()[static_cast<size_t>(element)];
        const bool ofBounds = clipPath.attribute("clipPathUnits") == QLatin1String("objectBoundingBox");
        if (!ofBounds && !place.fromDrawing) break;
        const QTransform toPixels = (ofBounds ? ofBox(place.bounds) : *place.fromDrawing) * toPicture;
        QPainter painter(&left);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        painter.drawImage(0, 0, content(element, true, toPixels, part));
        next = readReference(clipPath.attribute("clip-path"));
    }
    return left;
}

bool PreviewPictures::hasMask(const QString& id) const {
    return !id.isEmpty() && definitions_.find(id, {"mask"}) >= 0;
}

QImage PreviewPictures::masked(const QString& id, const PaintPlace& place, const QTransform& toPicture,
                               const QImage& layer, const QRect& part) {
    const int element = definitions_.find(id, {"mask"});
    const auto& mask = definitions_.elements()[static_cast<size_t>(element)];
    const bool ofBounds = mask.attribute("maskContentUnits") == QLatin1String("objectBoundingBox");
    if (!ofBounds && !place.fromDrawing) return layer;
    QImage light =
        content(element, false, (ofBounds ? ofBox(place.bounds) : *place.fromDrawing) * toPicture, part);
    for (int y = 0; y < light.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(light.scanLine(y));
        for (int x = 0; x < light.width(); ++x) {
            // The luminance of what is premultiplied: opacity is in it.
            const int lit = (2125 * qRed(line[x]) + 7154 * qGreen(line[x]) + 721 * qBlue(line[x])) / 10000;
            line[x] = qRgba(lit, lit, lit, lit);
        }
    }
    if (mask.attribute("maskUnits") == QLatin1String("userSpaceOnUse") && place.fromDrawing) {
        // Beyond its region nothing is left.
        const auto number = [&](const char* name) {
            return leadingNumber(mask.attribute(name)).value_or(0.0);
        };
        const QRectF region(number("x"), number("y"), number("width"), number("height"));
        QImage within = emptyPicture(light.size());
        QPainter painter(&within);
        painter.setClipRect((*place.fromDrawing * toPicture).mapRect(region).translated(-part.topLeft()));
        painter.drawImage(0, 0, light);
        painter.end();
        light = within;
    }
    QImage left = layer;
    QPainter painter(&left);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, light);
    return left;
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
