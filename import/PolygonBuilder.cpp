// See the header.
#include "import/PolygonBuilder.h"

#include <algorithm>
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
    std::vector<QPointF> mapped(points.size());
    std::transform(points.begin(), points.end(), mapped.begin(),
                   [&](const QPointF& point) { return transform.map(point); });
    const auto finite = [](const QPointF& p) { return std::isfinite(p.x()) && std::isfinite(p.y()); };
    if (!std::all_of(mapped.begin(), mapped.end(), finite)) return false;

    loader.beginPolygon(type);
    uint32_t first = 0;
    for (size_t i = 0; i < mapped.size(); ++i) {
        const uint32_t point = loader.addPoint(mapped[i].x(), mapped[i].y(), 0.0);
        if (i == 0) first = point;
        loader.addVertex(point);
    }
    if (closing == Closing::kFirstVertex && !mapped.empty()) loader.addVertex(first);
    loader.setLastPolygon(loader.endPolygon(0));
    return true;
}

}  // namespace tzsvg
