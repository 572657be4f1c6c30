#include "image/culling/CellRenderers.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "hostsdk/CTzError.h"
#include "image/DrawingCost.h"
#include "image/culling/CullingRules.h"
#include "image/culling/ReachMeasuring.h"

namespace tzsvg {
namespace {

// Tiles that show more than a sixteenth of the picture are drawn whole.
constexpr uint32_t kFirstDepth = 2;

// How far beyond a cell its drawing reaches, in sides of the cell. The rows of tiles do not meet the cells
// exactly: a level's short side is rounded up to a whole pixel.
constexpr double kBeyondCell = 1.0 / 32.0;

// How far outside its own bounds a shape may colour pixels: smooth edges take one, and so do lines that are
// thinner than a pixel.
constexpr double kBlurredPixels = 3.0;

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

std::optional<CellRenderers::Measured> CellRenderers::measure(const QByteArray& xml) const {
    std::optional<DrawingParts> drawing = DrawingParts::of(xml);
    if (!drawing || drawing->shapes().size() < settings_.fewestShapes ||
        drawing->always().size() * settings_.worthLoading > drawing->parts().size())
        return std::nullopt;
    std::optional<PartReach> reach = measureReach(*drawing, area_);
    if (!reach) return std::nullopt;
    uint32_t depth = kFirstDepth;
    for (size_t cells = size_t{1} << (2 * depth); drawing->shapes().size() / cells > settings_.fewShapes;
         cells *= 4)
        ++depth;
    return Measured{*std::move(drawing), *std::move(reach), depth};
}

// Nothing when there are no cells, or not yet.
const CellRenderers::Measured* CellRenderers::measured() {
    if (!isDone_) {
        const std::unique_lock held(measuring_, std::try_to_lock);
        if (!held) return nullptr;
        if (!isDone_) {
            if (const std::optional<QByteArray> xml = isProvenRenderer() ? read_() : std::nullopt)
                measured_ = measure(*xml);
            isDone_ = true;
        }
    }
    return measured_ ? &*measured_ : nullptr;
}

// ---- Cells --------------------------------------------------------------------------------------

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

bool CellRenderers::covers(const Cell& cell, const TileView& view) const {
    const double pixel =
        std::max(view.viewBox.width() / view.target.width(), view.viewBox.height() / view.target.height());
    return boxOf(cell).contains(Box::of(view.viewBox).grown(kBlurredPixels * pixel));
}

size_t CellRenderers::countOf(const Cell& cell) {
    {
        const std::lock_guard held(lock_);
        if (const auto known = counts_.find(cell); known != counts_.end()) return known->second;
    }
    const size_t count = measured_->reach.reaching(boxOf(cell)).size();
    const std::lock_guard held(lock_);
    return counts_.emplace(cell, count).first->second;
}

std::optional<CellRenderers::Cell> CellRenderers::cellFor(const TileView& view, uint32_t deepest) {
    uint32_t depth = std::min(deepest, measured_->sharedDepth);
    Cell cell = cellAt(view.viewBox.center(), depth);
    size_t count = countOf(cell);
    const auto pays = [&] {
        return (count + measured_->drawing.always().size()) * settings_.worthLoading <=
               measured_->drawing.parts().size();
    };
    while ((count > 2 * settings_.fewShapes || !pays()) && depth < deepest) {
        cell = cellAt(view.viewBox.center(), ++depth);
        count = countOf(cell);
    }
    if (!pays() || !covers(cell, view)) return std::nullopt;
    return count == 0 ? kEmptyCell : cell;
}

// ---- Renderers ----------------------------------------------------------------------------------

std::optional<CellRenderers::Taken> CellRenderers::take(const TileView& view) {
    const double tileSide = std::max(view.viewBox.width(), view.viewBox.height());
    constexpr double kRounding = 1e-6;
    const double depth = std::floor(std::log2(side_ / tileSide) + kRounding);
    if (!(depth >= kFirstDepth) || !measured()) return std::nullopt;
    constexpr double kDeepest = 20.0;
    const std::optional<Cell> cell = cellFor(view, static_cast<uint32_t>(std::min(depth, kDeepest)));
    if (!cell) return std::nullopt;
    if (std::optional<Taken> idle = takeIdle(*cell)) return idle;
    auto renderer = std::make_unique<QSvgRenderer>();
    const std::vector<uint32_t> shapes =
        *cell == kEmptyCell ? std::vector<uint32_t>() : measured_->reach.reaching(boxOf(*cell));
    if (!renderer->load(measured_->drawing.text(measured_->drawing.with(shapes)))) return std::nullopt;
    const bool isPlain = surveyPaint(*renderer).isPlain;
    return Taken{std::move(renderer), *cell, isPlain};
}

std::optional<CellRenderers::Taken> CellRenderers::takeIdle(const Cell& cell) {
    const std::lock_guard held(lock_);
    const auto at =
        std::find_if(idle_.begin(), idle_.end(), [&](const Idle& of) { return of.taken.cell == cell; });
    if (at == idle_.end()) return std::nullopt;
    std::optional<Taken> taken = std::move(at->taken);
    idleCost_ -= at->cost;
    idle_.erase(at);
    return taken;
}

size_t CellRenderers::costOf(size_t shapes) const {
    return shapes + measured_->drawing.always().size() + kCostOfRenderer;
}

void CellRenderers::giveBack(Taken taken) noexcept {
    std::list<Idle> dropped;  // goes after the lock
    // A renderer that cannot be put away is loaded again when it is needed.
    static_cast<void>(tzGate([&] {
        std::list<Idle> returned;
        returned.push_back({std::move(taken), 0});
        const std::lock_guard held(lock_);
        const auto count = counts_.find(returned.front().taken.cell);
        returned.front().cost = costOf(count == counts_.end() ? 0 : count->second);
        idleCost_ += returned.front().cost;
        idle_.splice(idle_.begin(), returned);
        // All together as large as one renderer of the whole drawing.
        while (idleCost_ > measured_->drawing.parts().size() && idle_.size() > 1) {
            idleCost_ -= idle_.back().cost;
            dropped.splice(dropped.begin(), idle_, std::prev(idle_.end()));
        }
    }));
}

}  // namespace tzsvg
