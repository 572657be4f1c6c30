// Which part of a scene a preview shows, and where in the picture. Used by Preview.cpp.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QTransform>
#include <algorithm>
#include <cmath>

#include "hostsdk/CTzError.h"

namespace tzhost {

// From scene units, y upwards, to pixels, y downwards.
class PreviewView {
  public:
    // Shows the box with a margin; throws CTzError when its extent is no number. The long side of the picture
    // has `longSide` pixels, of which `margin` are left free on every side.
    PreviewView(const TzBox& box, int longSide, double margin) : lower_(box.lower), margin_(margin) {
        const double extent = std::max(box.extent.x, box.extent.y);
        if (!std::isfinite(extent)) throw CTzError(kTzOutOfBounds);
        // A drawing without extent is a dot in the middle of its margins.
        scale_ = extent > 0 ? (longSide - 2 * margin_) / extent : 0.0;
        if (!std::isfinite(scale_)) scale_ = 0.0;
        const auto side = [&](double length) {
            // A side that is whole but for the last digits is that long.
            return std::clamp(static_cast<int>(std::ceil(length * scale_ + 2 * margin_ - 1e-6)), 1, longSide);
        };
        width_ = side(box.extent.x);
        height_ = side(box.extent.y);
    }

    QPointF pixel(const TzPoint& point) const {
        return {margin_ + (point.x - lower_.x) * scale_, height_ - margin_ - (point.y - lower_.y) * scale_};
    }
    int width() const { return width_; }
    int height() const { return height_; }
    double scale() const { return scale_; }  // pixels to a scene unit

    // From the drawing's own coordinates, y downwards, to pixels; `origin` is the height in the scene at
    // which they have 0.
    QTransform fromDrawing(double origin) const {
        const QPointF zero = pixel({0.0, origin, 0.0});
        return {scale_, 0, 0, scale_, zero.x(), zero.y()};
    }

  private:
    TzPoint lower_;
    double margin_;
    double scale_;
    int width_;
    int height_;
};

}  // namespace tzhost
