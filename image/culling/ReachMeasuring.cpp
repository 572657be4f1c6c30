// Every shape comes after a marker, a path that says by its coordinates which shape comes
// next. What is painted after it belongs to the shape; what is painted without a marker of its own only makes
// the reach of the one before larger. A shape whose marker does not come (in a group that is not displayed)
// counts as reaching everywhere, and so do those that cannot be measured.
#include "image/culling/ReachMeasuring.h"

#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

#include "image/culling/OutlineStrips.h"
#include "image/culling/ReachProbe.h"

namespace tzsvg {
namespace {

using Kind = DrawingPart::Kind;

// Beyond so many times the drawing's size, what is lost when numbers cancel out may be pixels.
constexpr double kMostMagnitude = 1 << 20;

// A shape smaller than this part of the drawing, a tile of the finest level, is told by its box alone, and so
// is one of many lines.
constexpr double kSmallShape = 1.0 / 256.0;
constexpr size_t kMostStrips = 1024;

constexpr size_t kShapesAtOnce = 4096;

class ReachEngine : public ReachProbe {
  public:
    ReachEngine(const DrawingParts& drawing, const QRectF& area)
        : ReachProbe(std::max(area.width(), area.height()), kMostMagnitude, kMostStrips),
          drawing_(drawing),
          reach_(area.topLeft()) {}

    // The markers of the pieces come in order; those of groups come again in each.
    void beginPiece() {
        endShape();
        lastMarker_ = -1;
        wildBefore_ = 0;
    }
    void endDrawing() {
        endShape();
        addUnmeasuredBefore(DrawingPart::kRoot);
        reach_.finish(side());
    }

    bool failed() const { return failed_; }
    PartReach takeReach() { return std::move(reach_); }

    void drawPath(const QPainterPath& path) override {
        if (!takeMarker(path)) ReachProbe::drawPath(path);
    }

  private:
    bool takeMarker(const QPainterPath& path) {
        if (path.elementCount() != 2) return false;
        const QPainterPath::Element from = path.elementAt(0);
        const QPainterPath::Element to = path.elementAt(1);
        if (from.y != DrawingParts::kMarkerY || to.y != from.y + 1.0 || to.x != from.x) return false;
        if (from.x == lastMarker_ && from.x != DrawingParts::kNoPart) return true;  // its stroke
        endShape();
        const QTransform& t = state->transform();
        const bool isTame = t.isAffine() && isMeasurable(t, {0.0, 0.0});
        if (from.x == DrawingParts::kNoPart) {
            failed_ = failed_ || (lastMarker_ < 0 && !isTame);
            return true;
        }
        const bool isInOrder = from.x > lastMarker_ && from.x < static_cast<double>(drawing_.parts().size());
        if (!isInOrder) failed_ = true;
        if (failed_) return true;
        lastMarker_ = from.x;
        beginPart(static_cast<uint32_t>(from.x), isTame);
        return true;
    }

    void beginPart(uint32_t part, bool isTame) {
        const DrawingPart& of = drawing_.parts()[part];
        if (of.kind == Kind::kGroup) {
            if (!isTame) wildBefore_ = std::max(wildBefore_, of.next);
            return;
        }
        addUnmeasuredBefore(part);
        current_ = part;
        isUnknown_ = !isTame || part < wildBefore_;
    }

    void endShape() {
        if (current_ == DrawingPart::kRoot) return;
        if (!shape_.box.isFinite() && shape_.box.left <= shape_.box.right) isUnknown_ = true;
        if (isUnknown_) shape_ = {Box::everywhere(), {}, false};
        if (shape_.strips.size() > kMostStrips || shape_.box.largerSide() < kSmallShape * side() ||
            isBox(shape_))
            shape_.strips.clear();
        reach_.add(current_, shape_);
        shape_ = {};
        isUnknown_ = false;
        current_ = DrawingPart::kRoot;
    }

    // The shapes up to a part, that part included, that no marker was seen of.
    void addUnmeasuredBefore(uint32_t part) {
        const std::vector<uint32_t>& shapes = drawing_.shapes();
        for (; nextShape_ < shapes.size() && shapes[nextShape_] < part; ++nextShape_)
            reach_.add(shapes[nextShape_], {Box::everywhere(), {}, false});
        if (nextShape_ >= shapes.size()) return;
        if (shapes[nextShape_] == part) {
            ++nextShape_;
        } else if (part != DrawingPart::kRoot) {
            failed_ = true;
        }
    }

    void add(const QPainterPath& path, bool fills) override {
        if (current_ != DrawingPart::kRoot && !isUnknown_) isUnknown_ = !measure(path, fills, shape_);
    }
    void addUnknown() override { isUnknown_ = true; }

    const DrawingParts& drawing_;
    PartReach reach_;
    double lastMarker_ = -1;
    uint32_t wildBefore_ = 0;  // parts inside a group that is too far out to be measured
    size_t nextShape_ = 0;     // in the drawing's shapes: the first that was not added yet
    bool failed_ = false;

    uint32_t current_ = DrawingPart::kRoot;  // the shape that is being drawn
    Reach shape_;
    bool isUnknown_ = false;
};

}  // namespace

std::optional<PartReach> measureReach(const DrawingParts& drawing, const QRectF& area) {
    const double side = std::max(area.width(), area.height());
    if (std::max(std::abs(area.x()), std::abs(area.y())) > kMostMagnitude * side) return std::nullopt;
    ReachEngine engine(drawing, area);
    ProbeDevice device(QSize(1, 1), engine);
    const std::vector<uint32_t>& shapes = drawing.shapes();
    for (size_t i = 0; i < shapes.size(); i += kShapesAtOnce) {
        const auto end = shapes.begin() + static_cast<ptrdiff_t>(std::min(i + kShapesAtOnce, shapes.size()));
        QSvgRenderer renderer;
        if (!renderer.load(
                drawing.text(drawing.with({shapes.begin() + static_cast<ptrdiff_t>(i), end}), true)))
            return std::nullopt;
        engine.beginPiece();
        QPainter painter(&device);
        renderer.setViewBox(area);
        renderer.render(&painter, area);  // one unit a pixel: what the probe is told is in the root's units
        painter.end();
        if (engine.failed()) return std::nullopt;
    }
    engine.endDrawing();
    if (engine.failed()) return std::nullopt;
    return engine.takeReach();
}

}  // namespace tzsvg
