#include "import/PolygonBuilder.h"

#include <cmath>

#include "import/SVGLoader.h"

namespace tzsvg {

bool sceneTransform(SVGLoader& loader, const XmlNode& element, QTransform& transform) {
    if (!loader.ancestors().accumulated(element, transform)) return false;
    if (transform.type() == QTransform::TxNone) {  // as for most shapes: the product below, worked out
        transform = QTransform(1, 0, 0, -1, 0, loader.flipHeight());
        return true;
    }
    transform *= QTransform().scale(1, -1);
    transform *= QTransform().translate(0, loader.flipHeight());
    return true;
}

bool addPolygon(SVGLoader& loader, TzTagId type, const QTransform& transform,
                const std::vector<QPointF>& points, Closing closing) {
    // Nearly all transforms only scale and move: the same result as QTransform::map(), without a call a
    // point.
    const bool onlyScales = transform.type() == QTransform::TxScale;
    std::vector<TzPoint> mapped;
    mapped.reserve(points.size());
    for (const QPointF& point : points) {
        const QPointF at = onlyScales ? QPointF(transform.m11() * point.x() + transform.dx(),
                                                transform.m22() * point.y() + transform.dy())
                                      : transform.map(point);
        if (!std::isfinite(at.x()) || !std::isfinite(at.y())) return false;
        mapped.push_back({at.x(), at.y(), 0.0});
    }

    loader.beginPolygon(type);
    const uint32_t first = mapped.empty() ? 0 : loader.addPoints(mapped);
    for (uint32_t i = 0; i < mapped.size(); ++i) loader.addVertex(first + i);
    if (closing == Closing::kFirstVertex && !mapped.empty()) loader.addVertex(first);
    loader.setLastPolygon(loader.endPolygon(0));
    return true;
}

}  // namespace tzsvg
