#include "image/painting/TileCanvas.h"

#include <string_view>

#include "image/painting/TileEngine.h"

namespace tzsvg {

// An image is asked for its engine by QPainter.
class TileCanvas::Device : public QImage {
  public:
    explicit Device(QImage& pixels)
        : QImage(pixels.bits(), pixels.width(), pixels.height(), pixels.bytesPerLine(), pixels.format()),
          engine_(std::make_unique<TileEngine>(*this)) {}
    QPaintEngine* paintEngine() const override { return engine_.get(); }
    const TileEngine& engine() const { return *engine_; }

  private:
    std::unique_ptr<TileEngine> engine_;
};

TileCanvas::TileCanvas(QImage& pixels)
    : device_(isOurs() ? std::make_unique<Device>(pixels) : nullptr), pixels_(pixels) {}

TileCanvas::~TileCanvas() = default;

QPaintDevice& TileCanvas::device() {
    return device_ ? *device_ : pixels_;
}

bool TileCanvas::hasTrimmed() const {
    return device_ && device_->engine().hasTrimmed();
}

// The engine is derived from Qt's own, which is no public interface: it is used with the very version that it
// was compiled with, and that it was proved with. Curves and lines are cut with the same numbers here and in
// Qt where both compute alike: where a processor multiplies and adds in one go, compilers do so now here, now
// there, and Qt's rasterizer counts in `long`.
bool TileCanvas::isOurs() {
#if defined(__x86_64__) && defined(__LP64__) && !defined(__FMA__)
    constexpr std::string_view kProved = "6.4.";
    const std::string_view version = qVersion();
    return version == QT_VERSION_STR && version.substr(0, kProved.size()) == kProved;
#else
    return false;
#endif
}

}  // namespace tzsvg
