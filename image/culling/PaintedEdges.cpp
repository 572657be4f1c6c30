#include "image/culling/PaintedEdges.h"

#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>
#include <algorithm>
#include <string_view>
#include <utility>

#include "image/culling/OutlineStrips.h"
#include "image/culling/ReachProbe.h"

namespace tzsvg {
namespace {

// Looking through so many takes some 0.05 ms, and they take half a megabyte.
constexpr size_t kMostEdges = 1U << 14U;

// Qt cuts outlines to what it paints on when they are longer than 2^23 pixels: these are told as they are up
// to so many sides of the drawing, 65,536 pixels each.
constexpr double kMostSides = 32.0;

// Qt 5.15 cuts them from 2^15 pixels on, and a row's otherwise than a tile's.
bool isProvenForRows() {
    constexpr std::string_view kVersion = "6.4.";
    return sizeof(void*) == sizeof(uint64_t) &&
           std::string_view(qVersion()).substr(0, kVersion.size()) == kVersion;
}

class EdgeProbe : public ReachProbe {
  public:
    explicit EdgeProbe(double side) : ReachProbe(side, kMostSides, kMostEdges) {}

    bool isComplete() const { return isComplete_ && reach_.strips.size() <= kMostEdges; }
    std::vector<Strip> takeEdges() { return std::move(reach_.strips); }
    std::vector<PaintedEdges::Paint> takePaints() { return std::move(paints_); }

  private:
    void add(const QPainterPath& path, bool fills) override {
        if (!isComplete()) return;
        const size_t first = reach_.strips.size();
        isComplete_ = measure(path, fills, reach_);
        // Lines have no inside, and theirs are not closed.
        const bool isOpaque = fills && !isOfLines(path) && state->brush().isOpaque() &&
                              state->opacity() == 1.0 &&
                              state->compositionMode() == QPainter::CompositionMode_SourceOver;
        if (reach_.strips.size() != first)
            paints_.push_back({first, reach_.strips.size(), isOpaque, path.fillRule()});
    }
    void addUnknown() override { isComplete_ = false; }

    Reach reach_;
    std::vector<PaintedEdges::Paint> paints_;
    bool isComplete_ = true;
};

}  // namespace

PaintedEdges::PaintedEdges(QSvgRenderer& renderer, const QRectF& area) {
    if (!isProvenForRows()) return;
    EdgeProbe probe(std::max(area.width(), area.height()));
    ProbeDevice device(QSize(1, 1), probe);
    QPainter painter(&device);
    renderer.setViewBox(area);
    renderer.render(&painter, area);  // one unit a pixel: what the probe is told is in the root's units
    painter.end();
    areTold_ = probe.isComplete();
    if (!areTold_) return;
    edges_ = probe.takeEdges();
    paints_ = probe.takePaints();
}

bool PaintedEdges::leaveAlike(const Box& area) const {
    if (!areTold_) return false;
    for (auto paint = paints_.rbegin(); paint != paints_.rend(); ++paint) {
        const auto first = edges_.begin() + static_cast<ptrdiff_t>(paint->firstEdge);
        const auto past = edges_.begin() + static_cast<ptrdiff_t>(paint->pastEdges);
        if (std::any_of(first, past, [&](const Strip& edge) {
                return lineTouches(edge.from, edge.to, area.grown(edge.radius));
            }))
            return false;
        if (paint->isOpaque && covers(*paint, area)) return true;
    }
    return true;
}

std::optional<QRgb> PaintedEdges::learntColour(const Box& area) const {
    const auto at = std::find_if(learnt_.begin(), learnt_.end(),
                                 [&](const Learnt& learnt) { return learnt.area.contains(area); });
    return at != learnt_.end() ? std::optional(at->colour) : std::nullopt;
}

// What no edge touches has the colour at all levels. Neighbours will be asked for next, by rows or by
// columns: the area is enlarged to each side as far as it stays without edges.
void PaintedEdges::learn(const Box& area, QRgb colour) {
    constexpr int kFarthest = 16;  // that many neighbours are added at once, at most
    constexpr size_t kMostLearnt = 64;
    Box of = area;
    const auto enlarge = [&](const Box& to) {
        if (leaveAlike(to)) of = to;
    };
    for (int neighbours = kFarthest; neighbours > 0; neighbours /= 2) {
        const double by = neighbours * area.largerSide();
        enlarge({of.left - by, of.top, of.right, of.bottom});
        enlarge({of.left, of.top, of.right + by, of.bottom});
        enlarge({of.left, of.top - by, of.right, of.bottom});
        enlarge({of.left, of.top, of.right, of.bottom + by});
    }
    if (learnt_.size() < kMostLearnt) {
        learnt_.push_back({of, colour});
    } else {
        learnt_[oldest_] = {of, colour};
        oldest_ = (oldest_ + 1) % kMostLearnt;
    }
}

// Of an area that its edges do not touch.
bool PaintedEdges::covers(const Paint& paint, const Box& area) const {
    const QPointF center(area.left / 2 + area.right / 2, area.top / 2 + area.bottom / 2);
    int rounds = 0;
    for (size_t i = paint.firstEdge; i < paint.pastEdges; ++i)
        rounds += roundOf(edges_[i].from, edges_[i].to, center);
    return paint.rule == Qt::WindingFill ? rounds != 0 : rounds % 2 != 0;
}

}  // namespace tzsvg
