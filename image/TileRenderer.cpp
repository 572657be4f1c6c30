#include "image/TileRenderer.h"

#include <QPainter>
#include <new>

#include "image/TileGeometry.h"
#include "image/UndividedPaint.h"

namespace tzsvg {
namespace {

void drawView(const TileView& view, QSvgRenderer& renderer, QImage& pixels) {
    // The target's edges are whole pixels but for rounding. The renderer itself cuts nothing off, neither at
    // the target nor at the view box: what a document has beyond its edge would be drawn into the pixels
    // beyond it.
    const QRect target(0, 0, qRound(view.target.width()), qRound(view.target.height()));
    if (target.isEmpty()) return;
    QPainter painter(&pixels);
    if (target != pixels.rect()) painter.setClipRect(target);
    renderer.setViewBox(view.viewBox);
    renderer.render(&painter, view.target);
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
    const RendererPool::Lease lease = renderers.lend(viewOf);
    drawn.document = lease.document();
    drawn.isOfCell = lease.isOfCell();
    if (!lease.renderer()) return drawn;
    const auto view = viewOf(lease.ownViewBox());
    if (!view) return drawn;
    const auto draw = [&] { drawView(*view, *lease.renderer(), drawn.pixels); };
    if (lease.isPlain()) {
        paintUndivided(draw);
    } else {
        draw();
    }
    return drawn;
}

}  // namespace tzsvg
