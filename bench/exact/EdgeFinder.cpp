#include "bench/exact/EdgeFinder.h"

#include <QImage>
#include <QPainter>

namespace tzbench {
namespace {

constexpr int kSide = 128;  // pixels of a look

QPointF pointOf(const QRectF& part, const QPoint& pixel) {
    return part.topLeft() +
           QPointF((pixel.x() + 1.0) * part.width(), (pixel.y() + 1.0) * part.height()) / kSide;
}

}  // namespace

EdgeFinder::EdgeFinder(const QString& fileName, const QRectF& area)
    : renderer_(fileName), area_(area), edges_(edgesIn(area)) {}

QPointF EdgeFinder::find(const Below& below) {
    const auto any = [&](const std::vector<QPoint>& of) {
        return of[below(static_cast<uint32_t>(of.size()))];
    };
    if (edges_.empty())
        return pointOf(area_, {static_cast<int>(below(kSide)), static_cast<int>(below(kSide))});
    const QPointF coarse = pointOf(area_, any(edges_));
    const QSizeF size = area_.size() * 2.0 / kSide;
    const QRectF part(coarse - QPointF(size.width(), size.height()) / 2.0, size);
    const std::vector<QPoint> edges = edgesIn(part);
    return edges.empty() ? coarse : pointOf(part, any(edges));
}

// The pixels that differ from the one to the right, or the one below.
std::vector<QPoint> EdgeFinder::edgesIn(const QRectF& part) {
    QImage look(kSide, kSide, QImage::Format_ARGB32);
    look.fill(Qt::transparent);
    QPainter painter(&look);
    renderer_.setViewBox(part);
    renderer_.render(&painter, QRectF(look.rect()));
    painter.end();
    std::vector<QPoint> edges;
    for (int y = 0; y + 1 < kSide; ++y) {
        for (int x = 0; x + 1 < kSide; ++x) {
            const QRgb pixel = look.pixel(x, y);
            if (pixel != look.pixel(x + 1, y) || pixel != look.pixel(x, y + 1)) edges.emplace_back(x, y);
        }
    }
    return edges;
}

}  // namespace tzbench
