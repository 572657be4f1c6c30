// Polygons are drawn as a renderer would draw their elements; PreviewStyle.h reads the style from the tags.
#include "host/preview/Preview.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>

#include "host/core/Observer.h"
#include "host/preview/PreviewStyle.h"
#include "hostsdk/CTzError.h"

namespace tzhost {
namespace {

constexpr TzTagId kSubPathTag = tzTag("SPAT");
constexpr double kMargin = 0.04;  // of the long side, on every side

// From scene units, y upwards, to pixels, y downwards.
class View {
  public:
    View(const TzBox& box, int longSide) : lower_(box.lower) {
        const double extent = std::max(box.extent.x, box.extent.y);
        if (!std::isfinite(extent)) throw CTzError(kTzOutOfBounds);
        margin_ = longSide * kMargin;
        // A drawing without extent is a dot in the middle of its margins.
        scale_ = extent > 0 ? (longSide - 2 * margin_) / extent : 0.0;
        if (!std::isfinite(scale_)) scale_ = 0.0;
        const auto side = [&](double length) {
            return std::clamp(static_cast<int>(std::ceil(length * scale_ + 2 * margin_)), 1, longSide);
        };
        width_ = side(box.extent.x);
        height_ = side(box.extent.y);
    }

    QPointF pixel(const TzPoint& point) const {
        return {margin_ + (point.x - lower_.x) * scale_, height_ - margin_ - (point.y - lower_.y) * scale_};
    }
    int width() const { return width_; }
    int height() const { return height_; }
    double scale() const { return scale_; }

  private:
    TzPoint lower_;
    double margin_;
    double scale_;
    int width_;
    int height_;
};

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
    if (!all) return {};
    all->extent = {all->upper.x - all->lower.x, all->upper.y - all->lower.y, 0};
    return *all;
}

void addOutline(QPainterPath& path, const View& view, const MeshData& mesh, const Polygon& polygon) {
    const uint32_t count = polygon.vertexCount;
    if (count == 0) return;
    const auto at = [&](uint32_t i) { return view.pixel(mesh.point(mesh.vertex(polygon, i))); };
    path.moveTo(at(0));
    uint32_t i = 1;
    if (polygon.type == kTzPolygonBezier) {
        for (; i + 2 < count; i += 3) path.cubicTo(at(i), at(i + 1), at(i + 2));
    }
    for (; i < count; ++i) path.lineTo(at(i));
    if (count > 2 && at(0) == at(count - 1)) path.closeSubpath();
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

std::string_view channelText(const ItemData& item, std::string_view name) {
    for (const Channel& channel : item.channels) {
        if (channel.name == name) return channel.text;
    }
    return {};
}

void drawMesh(QPainter& painter, const View& view, const ItemData& item, Progress& progress) {
    const MeshData& mesh = item.mesh;
    const PreviewGradients gradients(channelText(item, "svgdefs"));
    QPainterPath path;
    ShapeStyle style;
    const auto draw = [&] {
        path.setFillRule(style.fillRule);
        boundDashes(style.pen, path);
        painter.setPen(style.pen);
        painter.setBrush(style.brush);
        painter.setOpacity(style.opacity);
        painter.drawPath(path);
        path = QPainterPath();
    };
    for (uint32_t i = 0; i < mesh.polygonCount(); ++i) {
        const Polygon& polygon = mesh.polygon(i);
        // The polygons of one path are filled together, or its holes would be filled as well: "start{1}"
        // opens a path, "{1}" goes on with it, "end{1}" closes it.
        const std::string_view subPath = findTag(polygon.tags, kSubPathTag).value_or("");
        const bool goesOn = subPath.substr(0, 1) == "{" || subPath.substr(0, 4) == "end{";
        if (!goesOn) {
            if (!path.isEmpty()) draw();
            style = readStyle(polygon.tags, gradients, view.scale());
        }
        addOutline(path, view, mesh, polygon);
        progress.step();
    }
    if (!path.isEmpty()) draw();
}

}  // namespace

QImage drawScene(const Scene& scene, int longSide) {
    const View view(sceneBounds(scene), longSide);
    QImage image(view.width(), view.height(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) throw CTzError(kTzOutOfMemory);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    uint64_t polygons = 0;
    for (const auto& item : scene.items()) polygons += item->data().mesh.polygonCount();
    Progress progress(scene.observer(), "drawing", polygons);
    for (const auto& item : scene.items()) drawMesh(painter, view, item->data(), progress);
    return image;
}

}  // namespace tzhost
