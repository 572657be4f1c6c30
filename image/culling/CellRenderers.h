// Renderers of parts of one drawing: the picture is cut into cells, halved again and again, and a cell's
// renderer has only what may paint in that cell. A tile is drawn by the renderer of a cell that it lies in,
// pixel by pixel as the whole drawing's renderer would draw it, since Qt does the same for every shape that
// is left. Owned by a RendererPool, for one state of the drawing's file; any thread may ask.
//
// Nothing is prepared before a tile is asked for that would gain from it. Then the drawing is measured
// (ReachMeasuring.h); threads that come meanwhile draw as if there were no cells.
#pragma once

#include <QByteArray>
#include <QRectF>
#include <QSvgRenderer>
#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <unordered_map>

#include "image/TileGeometry.h"
#include "image/culling/CullingSettings.h"
#include "image/culling/DrawingParts.h"
#include "image/culling/PartReach.h"

namespace tzsvg {

class CellRenderers {
  public:
    // A square of the picture: its side is the picture's longer one, halved `depth` times.
    struct Cell {
        uint32_t depth = 0;
        uint32_t column = 0;
        uint32_t row = 0;
        friend bool operator==(const Cell& a, const Cell& b) {
            return a.depth == b.depth && a.column == b.column && a.row == b.row;
        }
    };
    struct Taken {
        std::unique_ptr<QSvgRenderer> renderer;
        Cell cell;
        size_t shapes;
    };

    // `read` gives the document's text, or nothing when it is not at hand any more; `area` is what of the
    // drawing can be seen, in its view box's units.
    CellRenderers(std::function<std::optional<QByteArray>()> read, const QRectF& area,
                  const CullingSettings& settings);
    ~CellRenderers();
    CellRenderers(const CellRenderers&) = delete;
    CellRenderers& operator=(const CellRenderers&) = delete;

    // Whether the drawing is yet to be measured, for this tile.
    bool wantsPreparing(const TileView& view) const;

    // Measures it, unless another thread does. `whole` is a renderer of the whole drawing, whose view box is
    // changed.
    void prepare(QSvgRenderer& whole);

    // The renderer for a tile, for the caller alone until it is given back; nothing when the whole drawing's
    // is to draw it.
    std::optional<Taken> take(const TileView& view);
    void giveBack(Taken taken) noexcept;

  private:
    struct Measured {
        DrawingParts drawing;
        PartReach reach;
        uint32_t sharedDepth;  // where cells have few shapes on average: smaller ones would be no quicker
        size_t worthLoading;   // CullingSettings
    };
    struct Idle {
        Taken taken;
        size_t cost;
    };
    struct CellHash {
        size_t operator()(const Cell& cell) const {
            return std::hash<uint64_t>()((uint64_t{cell.depth} << 58U) ^ (uint64_t{cell.column} << 29U) ^
                                         cell.row);
        }
    };

    std::optional<Measured> measure(const QByteArray& xml, QSvgRenderer& whole) const;
    uint32_t deepestFor(const TileView& view) const;
    Cell cellAt(const QPointF& point, uint32_t depth) const;
    Box boxOf(const Cell& cell) const;
    bool pays(size_t shapes) const;
    std::optional<Taken> load(const Cell& cell, const PartReach::Numbers& shapes) const;
    std::optional<Taken> takeIdle(const Cell& cell);
    size_t costOf(const Taken& taken) const;

    const std::function<std::optional<QByteArray>()> read_;
    const QRectF area_;
    const double side_;
    const CullingSettings settings_;

    std::mutex measuring_;
    std::atomic<bool> isDone_{false};
    std::optional<Measured> measured_;  // fixed once isDone_; nothing: there are to be no cells

    std::mutex lock_;       // guards what follows
    std::list<Idle> idle_;  // the one used last first
    std::unordered_multimap<Cell, std::list<Idle>::iterator, CellHash> idleOf_;
    size_t idleCost_ = 0;
};

}  // namespace tzsvg
