#include "host/preview/PreviewCanvas.h"

namespace tzhost {
namespace {

constexpr size_t kMostLayers = 16;

std::unique_ptr<QPainter> makePainter(QImage& image) {
    auto painter = std::make_unique<QPainter>(&image);
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    return painter;
}

}  // namespace

PreviewCanvas::PreviewCanvas(QImage& picture) : size_(picture.size()), base_(makePainter(picture)) {
    layers_.reserve(kMostLayers);  // painters refer to their images
}

void PreviewCanvas::open() {
    if (ignored_ > 0 || depth_ == kMostLayers) {
        ++ignored_;
        return;
    }
    if (depth_ == layers_.size()) {
        QImage image(size_, QImage::Format_ARGB32_Premultiplied);
        if (image.isNull()) {
            ++ignored_;
            return;
        }
        image.fill(Qt::transparent);
        Layer& layer = layers_.emplace_back();
        layer.image = std::move(image);
        layer.painter = makePainter(layer.image);
    }
    ++depth_;
}

void PreviewCanvas::willPaint(const QRectF& pixels) {
    if (depth_ == 0) return;
    // Far away it may be beyond what whole numbers hold.
    const QRectF near = pixels & QRectF(QPointF(0, 0), QSizeF(size_));
    layers_[depth_ - 1].painted |= near.toAlignedRect() & QRect(QPoint(0, 0), size_);
}

void PreviewCanvas::close(double opacity, const Mask& mask) {
    if (ignored_ > 0) {
        --ignored_;
        return;
    }
    Layer& layer = layers_[--depth_];
    const QRect part = layer.painted;
    layer.painted = QRect();
    if (part.isEmpty()) return;
    QPainter& into = *layer.painter;
    into.resetTransform();
    into.setOpacity(1.0);
    if (mask) {
        into.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        into.drawImage(part.topLeft(), mask(part));
    }
    willPaint(part);
    painter().resetTransform();
    painter().setOpacity(opacity);
    painter().drawImage(part.topLeft(), layer.image, part);
    into.setCompositionMode(QPainter::CompositionMode_Source);
    into.fillRect(part, Qt::transparent);
    into.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

}  // namespace tzhost
