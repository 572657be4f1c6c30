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

    // What is done to a layer: a picture of the part asked for is made of the one that is there, which
    // reaches `reach` pixels farther than what was painted.
    struct Effect {
        int reach = 0;
        std::function<QImage(const QImage& layer, const QRect& part)> apply;
    };

    // Puts the layer into what is below it, after the effects, in their order.
    void close(double opacity, const std::vector<Effect>& effects);

  private:
    // Kept when it is closed: the next one at this depth uses it again.
    struct Layer {
        QImage image;
        std::unique_ptr<QPainter> painter;
        QRect painted;
    };

    size_t mostLayers() const;

    QSize size_;
    std::unique_ptr<QPainter> base_;
    std::vector<Layer> layers_;
    size_t depth_ = 0;
    size_t ignored_ = 0;  // open layers that do nothing
};

}  // namespace tzhost
