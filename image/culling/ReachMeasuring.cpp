// Most drawings are of such shapes that Qt begins each by filling it once, seen or not: when it fills as
// often as there are shapes, the nth fill is the nth shape, and the renderer that is loaded anyway tells. Of
// any other drawing a marked one is loaded: every shape comes after a marker, a path that says by its
// coordinates which shape comes next. What is painted after it belongs to the shape; what is painted without
// a marker of its own only makes the reach of the one before larger. A shape whose marker does not come (in a
// group that is not displayed) counts as reaching everywhere, and so do those that cannot be measured.
#include "image/culling/ReachMeasuring.h"

#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

#include "image/culling/ReachProbe.h"

namespace tzsvg {
namespace {

using Kind = DrawingPart::Kind;

// Beyond so many times the drawing's size, what is lost when numbers cancel out may be pixels.
constexpr double kMostMagnitude = 1 << 20;

constexpr size_t kShapesAtOnce = 4096;

double longerSide(const QRectF& area) {
    return std::max(area.width(), area.height());
}

// Gathers what is painted shape by shape; which is painted is for the derived classes to say.
class ShapeProbe : public ReachProbe {
  public:
    PartReach takeReach() {
        reach_.finish(side_);
        return std::move(reach_);
    }

  protected:
    explicit ShapeProbe(const QRectF& area)
        : ReachProbe(kMostMagnitude * longerSide(area)), side_(longerSide(area)), reach_(area.topLeft()) {}

    void beginShape(uint32_t part, bool isMeasurable) {
        current_ = part;
        isUnknown_ = !isMeasurable;
    }

    void endShape() {
        if (current_ == DrawingPart::kRoot) return;
        if (!shape_.isFinite() && shape_.left <= shape_.right) isUnknown_ = true;
        reach_.add(current_, isUnknown_ ? Box::everywhere() : shape_);
        shape_ = {};
        isUnknown_ = false;
        current_ = DrawingPart::kRoot;
    }

    void addUnmeasured(uint32_t part) { reach_.add(part, Box::everywhere()); }

    void add(const QPainterPath& path, bool fills) override {
        if (current_ != DrawingPart::kRoot && !isUnknown_) isUnknown_ = !measure(path, fills, shape_);
    }
    void addUnknown() override { isUnknown_ = true; }

  private:
    const double side_;
    PartReach reach_;
    uint32_t current_ = DrawingPart::kRoot;  // the shape that is being drawn
    Box shape_;
    bool isUnknown_ = false;
};

// Of a drawing whose shapes are filled one after another (DrawingParts::isFilledInOrder()).
class OrderedProbe : public ShapeProbe {
  public:
    OrderedProbe(const std::vector<uint32_t>& shapes, const QRectF& area)
        : ShapeProbe(area), shapes_(shapes) {}

    // Whether each shape was seen: one that is not displayed is not filled, and those after it cannot be
    // told.
    bool endDrawing() {
        endShape();
        return filled_ == shapes_.size();
    }

  private:
    void add(const QPainterPath& path, bool fills) override {
        if (state->pen().style() == Qt::NoPen) {  // not of a stroke
            endShape();
            if (filled_ < shapes_.size()) beginShape(shapes_[filled_], true);
            ++filled_;
        }
        ShapeProbe::add(path, fills);
    }

    const std::vector<uint32_t>& shapes_;
    size_t filled_ = 0;
};

// Of a marked drawing.
class MarkedProbe : public ShapeProbe {
  public:
    MarkedProbe(const DrawingParts& drawing, const QRectF& area) : ShapeProbe(area), drawing_(drawing) {}

    // The markers of the pieces come in order; those of groups come again in each.
    void beginPiece() {
        endShape();
        lastMarker_ = -1;
        wildBefore_ = 0;
    }
    void endDrawing() {
        endShape();
        addUnmeasuredBefore(DrawingPart::kRoot);
    }

    bool failed() const { return failed_; }

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
        beginShape(part, isTame && part >= wildBefore_);
    }

    // The shapes up to a part, that part included, that no marker was seen of.
    void addUnmeasuredBefore(uint32_t part) {
        const std::vector<uint32_t>& shapes = drawing_.shapes();
        for (; nextShape_ < shapes.size() && shapes[nextShape_] < part; ++nextShape_)
            addUnmeasured(shapes[nextShape_]);
        if (nextShape_ >= shapes.size()) return;
        if (shapes[nextShape_] == part) {
            ++nextShape_;
        } else if (part != DrawingPart::kRoot) {
            failed_ = true;
        }
    }

    const DrawingParts& drawing_;
    double lastMarker_ = -1;
    uint32_t wildBefore_ = 0;  // parts inside a group that is too far out to be measured
    size_t nextShape_ = 0;     // in the drawing's shapes: the first that was not added yet
    bool failed_ = false;
};

// One unit a pixel: what the probe is told is in the root's units.
void draw(QSvgRenderer& renderer, const QRectF& area, ProbeEngine& probe) {
    ProbeDevice device(QSize(1, 1), probe);
    QPainter painter(&device);
    renderer.setViewBox(area);
    renderer.render(&painter, area);
    painter.end();
}

std::optional<PartReach> measureInOrder(const DrawingParts& drawing, const QRectF& area,
                                        QSvgRenderer& whole) {
    OrderedProbe probe(drawing.shapes(), area);
    draw(whole, area, probe);
    if (!probe.endDrawing()) return std::nullopt;
    return probe.takeReach();
}

std::optional<PartReach> measureMarked(const DrawingParts& drawing, const QRectF& area) {
    MarkedProbe probe(drawing, area);
    const std::vector<uint32_t>& shapes = drawing.shapes();
    for (size_t i = 0; i < shapes.size(); i += kShapesAtOnce) {
        const auto end = shapes.begin() + static_cast<ptrdiff_t>(std::min(i + kShapesAtOnce, shapes.size()));
        QSvgRenderer renderer;
        if (!renderer.load(
                drawing.text(drawing.with({shapes.begin() + static_cast<ptrdiff_t>(i), end}), true)))
            return std::nullopt;
        probe.beginPiece();
        draw(renderer, area, probe);
        if (probe.failed()) return std::nullopt;
    }
    probe.endDrawing();
    if (probe.failed()) return std::nullopt;
    return probe.takeReach();
}

}  // namespace

std::optional<PartReach> measureReach(const DrawingParts& drawing, const QRectF& area, QSvgRenderer& whole) {
    if (std::max(std::abs(area.x()), std::abs(area.y())) > kMostMagnitude * longerSide(area))
        return std::nullopt;
    std::optional<PartReach> reach;
    if (drawing.isFilledInOrder()) reach = measureInOrder(drawing, area, whole);
    return reach ? std::move(reach) : measureMarked(drawing, area);
}

}  // namespace tzsvg
