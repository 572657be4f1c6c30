#include "import/PolygonBuilder.h"

#include <cmath>

#include "import/SVGLoader.h"

namespace tzsvg {

bool sceneTransform(SVGLoader& loader, const XmlNode& element, QTransform& transform) {
    if (!loader.ancestors().accumulated(element, transform)) return false;
    if (transform.type() == QTransform::TxNone) {  // most shapes have none: what the products below come to
        transform = QTransform(1, 0, 0, -1, 0, loader.flipHeight());
        return true;
    }
    transform *= QTransform().scale(1, -1);
    transform *= QTransform().translate(0, loader.flipHeight());
    return true;
}

bool addPolygon(SVGLoader& loader, TzTagId type, const QTransform& transform,
                const std::vector<QPointF>& points, Closing closing) {
    // What QTransform::map() comes to for nearly all, without a call for each point.
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
