// The picture that a preview paints on, with layers for what is put into it as a whole. Used by Preview.cpp.
#pragma once

#include <QImage>
#include <QPainter>
#include <functional>
#include <memory>
#include <vector>

namespace tzhost {

class PreviewCanvas {
  public:
    explicit PreviewCanvas(QImage& picture);

    QPainter& painter() { return *(depth_ == 0 ? base_ : layers_[depth_ - 1].painter); }

    // What is painted from here on goes into a layer, up to the matching close(). Deep nesting, and a lack of
    // memory, make layers that do nothing: what is in them is painted as it is.
    void open();

    // Says where the next is painted: pixels beyond these may be left out of layers.
    void willPaint(const QRectF& pixels);

    // Puts the layer into what is below it. `mask` makes a picture of the part asked for that is transparent
    // where the layer is to be.
    using Mask = std::function<QImage(const QRect& part)>;
    void close(double opacity, const Mask& mask);

  private:
    // Kept when it is closed: the next one at this depth uses it again.
    struct Layer {
        QImage image;
        std::unique_ptr<QPainter> painter;
        QRect painted;
    };

    QSize size_;
    std::unique_ptr<QPainter> base_;
    std::vector<Layer> layers_;
    size_t depth_ = 0;
    size_t ignored_ = 0;  // open layers that do nothing
};

}  // namespace tzhost
