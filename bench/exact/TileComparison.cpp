#include "bench/exact/TileComparison.h"

#include <alloca.h>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>
#include <vector>

#include "bench/exact/EdgeFinder.h"
#include "host/Host.h"
#include "hostsdk/CTzUser_Image.h"
#include "image/RendererPool.h"
#include "image/TileGeometry.h"
#include "image/TileRenderer.h"
#include "svg/GuiApplication.h"

namespace tzbench {
namespace {

using tzsvg::LevelTable;
using tzsvg::TileKey;

// The bare renderer is a fresh one every so many tiles: loading one for each would be most of the time.
constexpr uint32_t kTilesOfRenderer = 16;

double processorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// Not inlined: its buffers follow the stack of its caller.
__attribute__((noinline)) QImage bareTile(const LevelTable& levels, const TileKey& tile,
                                          QSvgRenderer& renderer, const QRectF& ownViewBox) {
    const TzTileLevel& level = levels.level(tile.level);
    QImage image(static_cast<int>(level.tileWidth), static_cast<int>(level.tileHeight),
                 QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    if (const auto view = tzsvg::tileView(levels, tile, ownViewBox)) {
        const QRect target(0, 0, qRound(view->target.width()), qRound(view->target.height()));
        if (target.isEmpty()) return image;
        QPainter painter(&image);
        if (target != image.rect()) painter.setClipRect(target);
        renderer.setViewBox(view->viewBox);
        renderer.render(&painter, view->target);
    }
    return image;
}

// Qt draws some pixels of gradients by the vector or one by one, as its buffers on the stack happen to be
// aligned, and the two are rounded differently: one renderer, called from 16 bytes further down the stack,
// may draw another picture. Whether the pixels are what it draws from any of these places.
bool isDrawnElsewhere(const QImage& pixels, const LevelTable& levels, const TileKey& tile,
                      QSvgRenderer& renderer, const QRectF& ownViewBox) {
    constexpr size_t kStep = 16;
    for (size_t moved = kStep; moved <= 4 * kStep; moved += kStep) {
        auto* const unused = static_cast<volatile char*>(alloca(moved));
        unused[0] = 0;
        if (pixels == bareTile(levels, tile, renderer, ownViewBox)) return true;
    }
    return false;
}

void reportDifference(const QString& fileName, const TileKey& tile, const tzsvg::DrawnTile& drawn,
                      const QImage& expected) {
    QRect where;
    int pixels = 0;
    for (int y = 0; y < expected.height(); ++y) {
        for (int x = 0; x < expected.width(); ++x) {
            if (drawn.pixels.pixel(x, y) == expected.pixel(x, y)) continue;
            ++pixels;
            where |= QRect(x, y, 1, 1);
        }
    }
    std::fprintf(
        stderr, "%s: level key %u, column %u, row %u, drawn %s%s: %d pixels differ, in %dx%d at %d,%d\n",
        qPrintable(fileName), tile.level, tile.column, tile.row, drawn.isOfCell ? "in part" : "whole",
        drawn.isTrimmed ? ", trimmed" : "", pixels, where.width(), where.height(), where.x(), where.y());
}

class Chooser {
  public:
    Chooser(const LevelTable& levels, uint64_t seed, const QString& fileName, const QRectF& area)
        : levels_(levels), state_(seed), area_(area), edges_(fileName, area) {}

    // Most are of the levels that have more than one tile, and half of those at edges.
    TileKey next() {
        const uint32_t key = below(4) != 0 ? 9 + below(8) : below(tzsvg::kLevelCount);
        const TzTileLevel& level = levels_.level(key);
        const uint32_t columns = (level.width + level.tileWidth - 1) / level.tileWidth;
        const uint32_t rows = (level.height + level.tileHeight - 1) / level.tileHeight;
        const uint32_t mostColumns = std::min(columns, level.tileWidth);
        const uint32_t mostRows = std::min(rows, level.tileHeight);
        if (below(2) == 0) return {key, index(mostColumns), index(mostRows)};
        const QPointF edge = edges_.find([&](uint32_t bound) { return below(bound); }) - area_.topLeft();
        const auto indexOf = [](double part, uint32_t side, uint32_t tileSide, uint32_t count) {
            return static_cast<uint32_t>(std::clamp(part * side / tileSide, 0.0, count - 1.0));
        };
        return {key, indexOf(edge.x() / area_.width(), level.width, level.tileWidth, mostColumns),
                indexOf(edge.y() / area_.height(), level.height, level.tileHeight, mostRows)};
    }

  private:
    uint32_t below(uint32_t bound) {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        return static_cast<uint32_t>(state_ >> 33U) % bound;
    }
    // At random, at the ends, or on either side of where the picture is halved.
    uint32_t index(uint32_t count) {
        switch (below(8)) {
            case 0:
                return 0;
            case 1:
                return count - 1;
            case 2:
                return std::min(count - 1, count / 2);
            case 3:
                return count / 2 - std::min(count / 2, 1U);
            default:
                return below(count);
        }
    }

    const LevelTable& levels_;
    uint64_t state_;
    QRectF area_;
    EdgeFinder edges_;
};

}  // namespace

TileComparison compareTiles(const QString& fileName, uint32_t count, double seconds, uint64_t seed,
                            const tzsvg::CullingSettings& culling) {
    TileComparison result;
    if (!tzsvg::ensureGuiApplication()) return result;
    const tzhost::Host host;
    const CTzUser_ThreadService threads(
        CTzUser_Host(CTzPtr<ITzHost>::share(host.object())).service<ITzThreadService>());
    tzsvg::RendererPool renderers(fileName, threads.createMutex(), culling);
    QSize size;
    QRectF ownViewBox;
    {
        const auto lease = renderers.lend();
        if (!lease.renderer() || lease.renderer()->animated()) return result;
        size = lease.renderer()->defaultSize();
        ownViewBox = lease.ownViewBox();
    }
    if (size.isEmpty()) return result;
    const LevelTable levels({static_cast<uint32_t>(size.width()), static_cast<uint32_t>(size.height())});
    std::unique_ptr<QSvgRenderer> bare;
    Chooser chooser(levels, seed, fileName, QRectF(ownViewBox.topLeft(), QSizeF(size)));
    const double began = processorSeconds();
    for (uint32_t i = 0; i < count && processorSeconds() - began < seconds; ++i) {
        const TileKey tile = chooser.next();
        if (i % kTilesOfRenderer == 0) bare = std::make_unique<QSvgRenderer>(fileName);
        const tzsvg::DrawnTile drawn = drawTile(levels, tile, renderers);
        ++result.tiles;
        if (drawn.isOfCell) ++result.ofCells;
        if (drawn.isTrimmed) ++result.trimmed;
        const QImage expected = bareTile(levels, tile, *bare, ownViewBox);
        if (drawn.pixels == expected) continue;
        if (isDrawnElsewhere(drawn.pixels, levels, tile, *bare, ownViewBox)) {
            ++result.unsteady;
            continue;
        }
        ++result.different;
        reportDifference(fileName, tile, drawn, expected);
    }
    return result;
}

}  // namespace tzbench
