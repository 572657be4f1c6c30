#include "image/PaintProbe.h"

#include <QPainterPath>

namespace tzsvg {

void ProbeEngine::drawPolygon(const QPointF* points, int count, PolygonDrawMode /*mode*/) {
    QPainterPath path;
    if (count > 0) path.moveTo(points[0]);
    for (int i = 1; i < count; ++i) path.lineTo(points[i]);
    drawPath(path);
}

int ProbeDevice::metric(PaintDeviceMetric metric) const {
    constexpr int kDotsPerInch = 96;
    switch (metric) {
        case PdmWidth:
            return size_.width();
        case PdmHeight:
            return size_.height();
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return kDotsPerInch;
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        default:
            return 0;
    }
}

}  // namespace tzsvg
