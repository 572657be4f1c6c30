#include "host/preview/PreviewCanvas.h"

#include <algorithm>
#include <cstdint>

namespace tzhost {
namespace {

constexpr size_t kMostLayers = 16;
constexpr int64_t kMostLayerPixels = int64_t{1} << 28;  // of all layers together, but for the first

std::unique_ptr<QPainter> makePainter(QImage& image) {
    auto painter = std::make_unique<QPainter>(&image);
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    return painter;
}

}  // namespace

PreviewCanvas::PreviewCanvas(QImage& picture) : size_(picture.size()), base_(makePainter(picture)) {
    layers_.reserve(kMostLayers);  // painters refer to their images
}

size_t PreviewCanvas::mostLayers() const {
    const int64_t fitting = kMostLayerPixels / std::max(1, size_.width() * size_.height());
    return static_cast<size_t>(std::clamp<int64_t>(fitting, 1, kMostLayers));
}

void PreviewCanvas::open() {
    if (ignored_ > 0 || depth_ == mostLayers()) {
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

void PreviewCanvas::close(double opacity, const std::vector<Effect>& effects) {
    if (ignored_ > 0) {
        --ignored_;
        return;
    }
    Layer& layer = layers_[--depth_];
    QRect part = layer.painted;
    layer.painted = QRect();
    if (part.isEmpty()) return;
    QPainter& into = *layer.painter;
    into.resetTransform();
    into.setOpacity(1.0);
    into.setCompositionMode(QPainter::CompositionMode_Source);
    for (const Effect& effect : effects) {
        part = part.adjusted(-effect.reach, -effect.reach, effect.reach, effect.reach) & layer.image.rect();
        into.drawImage(part.topLeft(), effect.apply(layer.image.copy(part), part));
    }
    willPaint(part);
    painter().resetTransform();
    painter().setOpacity(opacity);
    painter().drawImage(part.topLeft(), layer.image, part);
    into.fillRect(part, Qt::transparent);
    into.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

}  // namespace tzhost
