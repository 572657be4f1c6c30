// What tiles are painted on. Used by TileRenderer.
#pragma once

#include <QImage>
#include <memory>

namespace tzsvg {

// Paints into an image, the same pixels as Qt does, by an engine of ours (TileEngine.h) where that is sure
// to. For one thread at a time.
class TileCanvas {
  public:
    // `pixels` outlives the canvas.
    explicit TileCanvas(QImage& pixels);
    ~TileCanvas();
    TileCanvas(const TileCanvas&) = delete;
    TileCanvas& operator=(const TileCanvas&) = delete;

    QPaintDevice& device();

    // Whether outlines were painted without what lies beside the image.
    bool hasTrimmed() const;

    // Whether the engine is ours, with this Qt.
    static bool isOurs();

  private:
    class Device;
    std::unique_ptr<Device> device_;
    QImage& pixels_;
};

}  // namespace tzsvg
