#include "image/culling/CellRenderers.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "hostsdk/CTzError.h"
#include "image/culling/CullingRules.h"
#include "image/culling/ReachMeasuring.h"

namespace tzsvg {
namespace {

// Tiles that show more than a sixteenth of the picture are drawn whole.
constexpr uint32_t kFirstDepth = 2;

// A cell is of sixteen tiles at least, where these have few shapes.
constexpr uint32_t kSharedAcross = 2;

// How far beyond a cell its drawing reaches, in sides of the cell. The rows of tiles do not meet the cells
// exactly: a level's short side is rounded up to a whole pixel.
constexpr double kBeyondCell = 1.0 / 32.0;

// What a renderer takes besides its shapes, counted in shapes.
constexpr size_t kCostOfRenderer = 32;

// The cell of all tiles that nothing reaches.
constexpr CellRenderers::Cell kEmptyCell = {63, 0, 0};

}  // namespace

CellRenderers::CellRenderers(std::function<std::optional<QByteArray>()> read, const QRectF& area,
                             const CullingSettings& settings)
    : read_(std::move(read)),
      area_(area),
      side_(std::max(area.width(), area.height())),
      settings_(settings) {}

CellRenderers::~CellRenderers() = default;

std::optional<CellRenderers::Measured> CellRenderers::measure(const QByteArray& xml,
                                                              QSvgRenderer& whole) const {
    std::optional<DrawingParts> drawing = DrawingParts::of(xml);
    if (!drawing || drawing->shapes().size() < settings_.fewestShapes ||
        drawing->always().size() * settings_.worthLoading > drawing->parts().size())
        return std::nullopt;
    std::optional<PartReach> reach = measureReach(*drawing, area_, whole);
    if (!reach) return std::nullopt;
    uint32_t depth = kFirstDepth;
    for (size_t cells = size_t{1} << (2 * depth); drawing->shapes().size() / cells > settings_.fewShapes;
         cells *= 4)
        ++depth;
    const auto gradients = static_cast<size_t>(
        std::count_if(drawing->parts().begin(), drawing->parts().end(),
                      [](const DrawingPart& part) { return part.kind == DrawingPart::Kind::kPaint; }));
    const size_t worthLoading =
        gradients > settings_.keptGradients ? settings_.worthLoadingWithMore : settings_.worthLoading;
    return Measured{*std::move(drawing), *std::move(reach), depth, worthLoading};
}

bool CellRenderers::wantsPreparing(const TileView& view) const {
    return !isDone_ && deepestFor(view) >= kFirstDepth;
}

void CellRenderers::prepare(QSvgRenderer& whole) {
    const std::unique_lock held(measuring_, std::try_to_lock);
    if (!held || isDone_) return;
    if (const std::optional<QByteArray> xml = isProvenRenderer() ? read_() : std::nullopt)
        measured_ = measure(*xml, whole);
    isDone_ = true;
}

// ---- Cells --------------------------------------------------------------------------------------

// The depth of the smallest cells that a tile may lie in.
uint32_t CellRenderers::deepestFor(const TileView& view) const {
    const double tileSide = std::max(view.viewBox.width(), view.viewBox.height());
    constexpr double kRounding = 1e-6;
    constexpr double kDeepest = 20.0;
    const double depth = std::floor(std::log2(side_ / tileSide) + kRounding);
    return depth > 0.0 ? static_cast<uint32_t>(std::min(kDeepest, depth)) : 0;
}

CellRenderers::Cell CellRenderers::cellAt(const QPointF& point, uint32_t depth) const {
    const double cells = std::ldexp(1.0, static_cast<int>(depth));
    const auto index = [&](double offset) {
        return static_cast<uint32_t>(std::clamp(std::floor(offset / side_ * cells), 0.0, cells - 1.0));
    };
    return {depth, index(point.x() - area_.x()), index(point.y() - area_.y())};
}

Box CellRenderers::boxOf(const Cell& cell) const {
    const double side = std::ldexp(side_, -static_cast<int>(cell.depth));
    const double left = area_.x() + cell.column * side;
    const double top = area_.y() + cell.row * side;
    return Box{left, top, left + side, top + side}.grown(kBeyondCell * side);
}

bool CellRenderers::pays(size_t shapes) const {
    return (shapes + measured_->drawing.always().size()) * measured_->worthLoading <=
           measured_->drawing.parts().size();
}

// ---- Renderers ----------------------------------------------------------------------------------

std::optional<CellRenderers::Taken> CellRenderers::take(const TileView& view) {
    const uint32_t deepest = deepestFor(view);
    if (deepest < kFirstDepth || !isDone_ || !measured_) return std::nullopt;

    const PartReach& reach = measured_->reach;
    Cell cell = cellAt(view.viewBox.center(), std::min(deepest, measured_->sharedDepth));
    PartReach::Numbers shapes = reach.reaching(boxOf(cell));
    while (cell.depth < deepest && (cell.depth + kSharedAcross < deepest ||
                                    shapes.size() > 2 * settings_.fewShapes || !pays(shapes.size()))) {
        cell = cellAt(view.viewBox.center(), cell.depth + 1);
        shapes = reach.reaching(boxOf(cell), shapes);
    }
    const Box tile = paintedAround(view.viewBox, view.target.size());
    if (!boxOf(cell).contains(tile)) return std::nullopt;

    if (!pays(shapes.size())) return std::nullopt;
    if (reach.reaching(tile, shapes).empty()) {
        cell = kEmptyCell;
        shapes.clear();
    }
    if (std::optional<Taken> idle = takeIdle(cell)) return idle;
    return load(cell, shapes);
}

std::optional<CellRenderers::Taken> CellRenderers::load(const Cell& cell,
                                                        const PartReach::Numbers& shapes) const {
    auto renderer = std::make_unique<QSvgRenderer>();
    const DrawingParts& drawing = measured_->drawing;
    if (!renderer->load(drawing.text(drawing.with(measured_->reach.partsOf(shapes))))) return std::nullopt;
    return Taken{std::move(renderer), cell, shapes.size()};
}

std::optional<CellRenderers::Taken> CellRenderers::takeIdle(const Cell& cell) {
    const std::lock_guard held(lock_);
    const auto at = idleOf_.find(cell);
    if (at == idleOf_.end()) return std::nullopt;
    std::optional<Taken> taken = std::move(at->second->taken);
    idleCost_ -= at->second->cost;
    idle_.erase(at->second);
    idleOf_.erase(at);
    return taken;
}

size_t CellRenderers::costOf(const Taken& taken) const {
    return taken.shapes + measured_->drawing.always().size() + kCostOfRenderer;
}

void CellRenderers::giveBack(Taken taken) noexcept {
    std::list<Idle> dropped;  // goes after the lock
    // A renderer that cannot be put away is loaded again when it is needed.
    static_cast<void>(tzGate([&] {
        std::list<Idle> returned;
        const size_t cost = costOf(taken);
        returned.push_back({std::move(taken), cost});
        const std::lock_guard held(lock_);
        idleOf_.emplace(returned.front().taken.cell, returned.begin());
        idleCost_ += cost;
        idle_.splice(idle_.begin(), returned);
        // All together as large as one renderer of the whole drawing.
        while (idleCost_ > measured_->drawing.parts().size() && idle_.size() > 1) {
            const auto last = std::prev(idle_.end());
            auto [at, past] = idleOf_.equal_range(last->taken.cell);
            at = std::find_if(at, past, [&](const auto& of) { return of.second == last; });
            idleOf_.erase(at);
            idleCost_ -= last->cost;
            dropped.splice(dropped.begin(), idle_, std::prev(idle_.end()));
        }
    }));
}

}  // namespace tzsvg
