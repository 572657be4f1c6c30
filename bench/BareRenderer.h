// The floor of all tile work: a loaded renderer of Qt's draws a part of a picture, and the pixels
// become floats. No cache, no lock, no host.
#pragma once

#include <QImage>
#include <QSvgRenderer>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

namespace tzbench {

constexpr uint32_t kTileSide = 256;

class BareRenderer {
  public:
    explicit BareRenderer(const std::filesystem::path& picture);

    // The tile of a level whose side is `levelSide` pixels; smaller levels are one tile.
    QImage draw(uint32_t levelSide, uint32_t column, uint32_t row);

    // The same, and its floats, which are kept as the host keeps its images.
    void drawFloats(uint32_t levelSide, uint32_t column, uint32_t row);

  private:
    QSvgRenderer renderer_;
    std::vector<std::unique_ptr<float[]>> tiles_;
};

}  // namespace tzbench
