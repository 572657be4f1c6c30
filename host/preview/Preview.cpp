// Polygons become shapes again, with the style of their tags and groups; groups that count as a whole are
// painted in layers.
#include "host/preview/Preview.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <numeric>

#include "host/core/Observer.h"
#include "host/preview/PreviewCanvas.h"
#include "host/preview/PreviewGroups.h"
#include "host/preview/PreviewOutline.h"
#include "host/preview/PreviewStyle.h"
#include "host/preview/PreviewText.h"
#include "host/preview/PreviewView.h"
#include "host/preview/definitions/PreviewFilters.h"
#include "hostsdk/CTzError.h"

namespace tzhost {
namespace {

constexpr double kMargin = 0.04;  // of the long side, on every side

TzBox boxOf(const TzPoint& lower, const TzPoint& upper) {
    return {lower, upper, {upper.x - lower.x, upper.y - lower.y, 0}};
}

TzBox sceneBounds(const Scene& scene) {
    std::optional<TzBox> all;
    for (const auto& item : scene.items()) {
        const MeshData& mesh = item->data().mesh;
        if (mesh.pointCount() == 0) continue;
        const TzBox box = mesh.bounds();
        if (!all) all = box;
        all->lower = {std::min(all->lower.x, box.lower.x), std::min(all->lower.y, box.lower.y), 0};
        all->upper = {std::max(all->upper.x, box.upper.x), std::max(all->upper.y, box.upper.y), 0};
    }
    return all ? boxOf(all->lower, all->upper) : TzBox{};
}

std::string_view channelText(const ItemData& item, std::string_view name) {
    for (const Channel& channel : item.channels) {
        if (channel.name == name) return channel.text;
    }
    return {};
}

// The page of the item's drawing: x, y, width, height, y downwards. Empty when there is none.
QRectF pageOf(const ItemData& item, const PreviewFrame& frame) {
    for (const ItemTag& tag : item.tags) {
        if (tag.id != tzTag("VBOX")) continue;
        const std::vector<double> box = readNumbers(QString::fromStdString(tag.text), 4);
        if (box.size() == 4) return {box[0], box[1], box[2], box[3]};
    }
    return frame.place ? QRectF(0, 0, frame.place->width, frame.place->height) : QRectF();
}

// The height in the scene at which the drawing of the item has y = 0; nothing where there is no drawing.
std::optional<double> originOf(const ItemData& item, const PreviewFrame& frame) {
    if (frame.place) return frame.place->origin;
    if (pageOf(item, frame).isEmpty()) return std::nullopt;
    return item.mesh.bounds().upper.y;
}

// The page of the first drawing that has one, in the scene.
std::optional<TzBox> pageBounds(const Scene& scene, const PreviewFrame& frame) {
    for (const auto& item : scene.items()) {
        const QRectF page = pageOf(item->data(), frame);
        if (page.isEmpty()) continue;
        const double zero = *originOf(item->data(), frame);
        return boxOf({page.left(), zero - page.bottom(), 0}, {page.right(), zero - page.top(), 0});
    }
    return std::nullopt;
}

// Makes a dashed line solid where there would be too many dashes: each takes QPainter some hundred bytes.
void boundDashes(QPen& pen, const QPainterPath& path) {
    if (pen.style() != Qt::CustomDashLine) return;
    const QVector<qreal> pattern = pen.dashPattern();
    const double sum = std::accumulate(pattern.begin(), pattern.end(), 0.0) * pen.widthF();
    double length = 0.0;  // a curve is no longer than the lines between its control points
    for (int i = 1; i < path.elementCount(); ++i) {
        const QPainterPath::Element to = path.elementAt(i);
        if (!to.isMoveTo()) length += QLineF(path.elementAt(i - 1), to).length();
    }
    constexpr double kMostDashes = 1 << 18;
    if (!(length * static_cast<double>(pattern.size()) <= kMostDashes * sum)) pen.setStyle(Qt::SolidLine);
}

// Draws the shapes of one mesh.
class MeshDrawing {
  public:
    MeshDrawing(PreviewCanvas& canvas, const PreviewView& view, const ItemData& item,
                const PreviewFrame& frame)
        : canvas_(canvas),
          view_(view),
          item_(item),
          definitions_(channelText(item, "svgdefs"), channelText(item, "clipdefs")),
          pictures_(definitions_),
          filters_(definitions_),
          groups_(channelText(item, "groupdefs"), channelText(item, "svgrootdef")) {
        const std::optional<double> origin = originOf(item, frame);
        if (origin && view.scale() > 0) toPixels_ = view.fromDrawing(*origin);
    }

    void draw(Progress& progress) {
        const MeshData& mesh = item_.mesh;
        PreviewOutline outline(view_, mesh);
        TagRun tags;
        for (uint32_t i = 0; i < mesh.polygonCount(); ++i) {
            const Polygon& polygon = mesh.polygon(i);
            // The polygons of one path are filled together, or its holes would be filled as well: "start{1}"
            // opens a path, "{1}" goes on with it, "end{1}" closes it.
            const std::string_view subPath = findTag(polygon.tags, tzTag("SPAT")).value_or("");
            const bool goesOn = subPath.substr(0, 1) == "{" || subPath.substr(0, 4) == "end{";
            if (!goesOn) {
                if (!outline.isEmpty()) drawShape(outline.take(), tags);
                tags = polygon.tags;
            }
            outline.add(polygon);
            progress.step();
        }
        if (!outline.isEmpty()) drawShape(outline.take(), tags);
        enter(nullptr);
    }

  private:
    // Opens and closes layers until those of this group and of the groups around it are open.
    void enter(const PreviewGroup* whole) {
        std::vector<const PreviewGroup*> wanted;
        for (; whole; whole = whole->wholeAround) wanted.push_back(whole);
        std::reverse(wanted.begin(), wanted.end());
        const auto differs = std::mismatch(open_.begin(), open_.end(), wanted.begin(), wanted.end());
        const auto kept = static_cast<size_t>(differs.first - open_.begin());
        for (; open_.size() > kept; open_.pop_back()) {
            closeLayer(open_.back()->effects, {QRectF(), toPixels_}, QTransform());
        }
        for (size_t i = kept; i < wanted.size(); ++i) {
            canvas_.open();
            open_.push_back(wanted[i]);
        }
    }

    // What of these can be drawn, in the order in which it is done.
    std::vector<PreviewCanvas::Effect> drawable(const PreviewEffects& effects, const PaintPlace& place,
                                                const QTransform& toPicture) {
        std::vector<PreviewCanvas::Effect> made;
        if (place.fromDrawing && filters_.canDraw(effects.filter)) {
            const QTransform toPixels = *place.fromDrawing * toPicture;
            made.push_back(
                {filters_.reach(effects.filter, toPixels), [=](const QImage& layer, const QRect& part) {
                     return filters_.filtered(effects.filter, layer, part.topLeft(), toPixels);
                 }});
        }
        if (pictures_.hasClipPath(effects.clipPath)) {
            made.push_back({0, [=](const QImage& layer, const QRect& part) {
                                return pictures_.clipped(effects.clipPath, place, toPicture, layer, part);
                            }});
        }
        if (pictures_.hasMask(effects.mask)) {
            made.push_back({0, [=](const QImage& layer, const QRect& part) {
                                return pictures_.masked(effects.mask, place, toPicture, layer, part);
                            }});
        }
        return made;
    }

    void closeLayer(const PreviewEffects& effects, const PaintPlace& place, const QTransform& toPicture) {
        canvas_.close(effects.opacity, drawable(effects, place, toPicture));
    }

    void drawShape(QPainterPath path, const TagRun& tags) {
        const PreviewGroup& group = groups_.find(findTag(tags, tzTag("PGRP")).value_or(""));
        Properties properties = group.inherited;
        properties.apply(tags);
        if (group.hidden || properties.isHidden()) return;
        enter(group.whole);

        // Under a transform of its own a shape is drawn as it was before it, for its stroke and its paints
        // are transformed as well.
        QTransform toPicture;
        PaintSource source{definitions_, pictures_, {QRectF(), toPixels_}, 1.0, view_.scale()};
        const QTransform own =
            readTransform(QString::fromStdString(std::string(findTag(tags, tzTag("TRAN")).value_or(""))));
        bool invertible = false;
        if (toPixels_ && !own.isIdentity()) {
            const QTransform back = (own * *toPixels_).inverted(&invertible);
            if (invertible) {
                path = back.map(path);
                toPicture = own * *toPixels_;
                source.place.fromDrawing = QTransform();
                source.pixels = std::sqrt(std::abs(toPicture.determinant()));
                source.units = 1.0;
            }
        }
        path.setFillRule(fillRule(properties));
        source.place.bounds = path.boundingRect();
        const QBrush brush = fillBrush(properties, source);
        QPen pen = strokePen(properties, source);
        boundDashes(pen, path);

        const PreviewEffects effects(properties);
        const bool both = brush.style() != Qt::NoBrush && pen.style() != Qt::NoPen;
        const bool isWhole =
            (effects.opacity < 1.0 && both) || !drawable(effects, source.place, toPicture).empty();
        if (isWhole) canvas_.open();
        const double reach =
            pen.style() == Qt::NoPen ? 1.0 : 1.0 + pen.widthF() * std::max(1.0, pen.miterLimit());
        canvas_.willPaint(toPicture.mapRect(path.controlPointRect().adjusted(-reach, -reach, reach, reach)));
        QPainter& painter = canvas_.painter();
        painter.setTransform(toPicture);
        painter.setPen(pen);
        painter.setBrush(brush);
        painter.setOpacity(isWhole ? 1.0 : effects.opacity);
        painter.drawPath(path);
        if (isWhole) closeLayer(effects, source.place, toPicture);
    }

    PreviewCanvas& canvas_;
    const PreviewView& view_;
    const ItemData& item_;
    const PreviewDefinitions definitions_;
    PreviewPictures pictures_;
    PreviewFilters filters_;
    const PreviewGroups groups_;
    std::optional<QTransform> toPixels_;  // from the drawing's coordinates
    std::vector<const PreviewGroup*> open_;
};

}  // namespace

bool hasPage(const Scene& scene, const PreviewFrame& frame) {
    return pageBounds(scene, frame).has_value();
}

QImage drawScene(const Scene& scene, int longSide, const PreviewFrame& frame) {
    const std::optional<TzBox> page = frame.page ? pageBounds(scene, frame) : std::nullopt;
    if (frame.page && !page) throw CTzError(kTzNotFound);
    const PreviewView view = page ? PreviewView(*page, longSide, 0.0)
                                  : PreviewView(sceneBounds(scene), longSide, longSide * kMargin);
    QImage image(view.width(), view.height(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) throw CTzError(kTzOutOfMemory);
    image.fill(Qt::white);
    PreviewCanvas canvas(image);
    uint64_t polygons = 0;
    for (const auto& item : scene.items()) polygons += item->data().mesh.polygonCount();
    Progress progress(scene.observer(), "drawing", polygons);
    for (const auto& item : scene.items()) MeshDrawing(canvas, view, item->data(), frame).draw(progress);
    return image;
}

}  // namespace tzhost
