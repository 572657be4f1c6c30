#include "image/TileRenderer.h"

#include <QPainter>
#include <new>

#include "image/TileGeometry.h"
#include "image/painting/TileCanvas.h"

namespace tzsvg {
namespace {

// Whether outlines were trimmed.
bool drawView(const TileView& view, RendererPool::Lease& lease, QImage& pixels) {
    // The target's edges are whole pixels but for rounding. The renderer itself cuts nothing off, neither at
    // the target nor at the view box: what a document has beyond its edge would be drawn into the pixels
    // beyond it.
    const QRect target(0, 0, qRound(view.target.width()), qRound(view.target.height()));
    if (target.isEmpty()) return false;
    TileCanvas canvas(pixels);
    QPainter painter(&canvas.device());
    if (target != pixels.rect()) painter.setClipRect(target);
    lease.renderer()->setViewBox(view.viewBox);
    lease.renderer()->render(&painter, view.target);
    return canvas.hasTrimmed();
}

}  // namespace

DrawnTile drawTile(const LevelTable& levels, const TileKey& tile, RendererPool& renderers) {
    const TzTileLevel& level = levels.level(tile.level);
    DrawnTile drawn;
    // Straight alpha on purpose: hosts get the colours of half-covered pixels undarkened.
    drawn.pixels =
        QImage(static_cast<int>(level.tileWidth), static_cast<int>(level.tileHeight), QImage::Format_ARGB32);
    if (drawn.pixels.isNull()) throw std::bad_alloc();
    drawn.pixels.fill(Qt::transparent);
    const auto viewOf = [&](const QRectF& ownViewBox) { return tileView(levels, tile, ownViewBox); };
    RendererPool::Lease lease = renderers.lend(viewOf);
    drawn.document = lease.document();
    drawn.isOfCell = lease.isOfCell();
    if (!lease.renderer()) return drawn;
    const auto view = viewOf(lease.ownViewBox());
    if (!view) return drawn;
    drawn.isTrimmed = drawView(*view, lease, drawn.pixels);
    return drawn;
}

}  // namespace tzsvg
