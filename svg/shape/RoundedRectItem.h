// The shape item of a rectangle with corner radii: the one kind that the toolkit has no item for.
#pragma once

#include <QGraphicsRectItem>

namespace tzsvg {

class QGraphicsItemRoundedRect : public QGraphicsRectItem {
  public:
    QGraphicsItemRoundedRect(const QRectF& rect, double rx, double ry)
        : QGraphicsRectItem(rect), rx_(rx), ry_(ry) {}

    double rx() const { return rx_; }
    double ry() const { return ry_; }

  private:
    double rx_;
    double ry_;
};

}  // namespace tzsvg
