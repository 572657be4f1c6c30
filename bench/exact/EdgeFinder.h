// Where something begins or ends in a drawing, by looking at it: most tiles of the finest levels show one
// colour, and tell little.
#pragma once

#include <QPoint>
#include <QPointF>
#include <QRectF>
#include <QSvgRenderer>
#include <cstdint>
#include <functional>
#include <vector>

namespace tzbench {

class EdgeFinder {
  public:
    using Below = std::function<uint32_t(uint32_t bound)>;  // a number at random

    // `area`: what of the drawing can be seen, in its view box's units.
    EdgeFinder(const QString& fileName, const QRectF& area);

    // A point at or near an edge, to a part in some ten thousand of the area; any point when no edge is seen.
    QPointF find(const Below& below);

  private:
    std::vector<QPoint> edgesIn(const QRectF& part);

    QSvgRenderer renderer_;
    QRectF area_;
    std::vector<QPoint> edges_;  // of the whole area
};

}  // namespace tzbench
