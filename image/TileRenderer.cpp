#include "image/TileRenderer.h"

#include <QPainter>
#include <algorithm>
#include <new>
#include <optional>

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

// The one colour of a tile's first row.
std::optional<QRgb> colourOfRow(const TileView& view, RendererPool::Lease& lease, const QImage& pixels) {
    QImage row(pixels.width(), 1, pixels.format());
    if (row.isNull()) throw std::bad_alloc();
    row.fill(Qt::transparent);
    drawView(view, lease, row);
    const auto* const first = reinterpret_cast<const QRgb*>(row.constScanLine(0));
    const bool isAlike = std::all_of(first, first + row.width(), [&](QRgb pixel) { return pixel == *first; });
    return isAlike ? std::optional(*first) : std::nullopt;
}

// Fills a tile of one colour; false when it is not known for one.
bool fillAlike(const TileView& view, RendererPool::Lease& lease, QImage& pixels) {
    if (view.target != QRectF(pixels.rect())) return false;
    PaintedEdges* const edges = lease.edges(view);
    if (!edges) return false;
    const Box area = paintedAround(view.viewBox, view.target.size());
    std::optional<QRgb> colour = edges->learntColour(area);
    if (!colour && edges->leaveAlike(area)) {
        colour = colourOfRow(view, lease, pixels);
        if (colour) edges->learn(area, *colour);
    }
    if (colour) pixels.fill(*colour);
    return colour.has_value();
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
    drawn.isOfOneColour = fillAlike(*view, lease, drawn.pixels);
    if (drawn.isOfOneColour) return drawn;
    drawn.isTrimmed = drawView(*view, lease, drawn.pixels);
    return drawn;
}

}  // namespace tzsvg
