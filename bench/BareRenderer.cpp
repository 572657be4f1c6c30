#include "bench/BareRenderer.h"

#include <QPainter>
#include <algorithm>
#include <array>
#include <stdexcept>

#include "bench/Documents.h"

namespace tzbench {
namespace {

std::array<float, 256> makeChannels() {
    std::array<float, 256> values{};
    for (size_t i = 0; i < values.size(); ++i) values[i] = static_cast<float>(i) / 255.0F;
    return values;
}

}  // namespace

BareRenderer::BareRenderer(const std::filesystem::path& picture)
    : renderer_(QString::fromStdString(picture.native())) {
    if (!renderer_.isValid()) throw std::runtime_error("Qt cannot draw " + picture.native());
}

QImage BareRenderer::draw(uint32_t levelSide, uint32_t column, uint32_t row) {
    const uint32_t side = std::min(levelSide, kTileSide);
    const double scale = static_cast<double>(kPictureSide) / levelSide;
    QImage image(static_cast<int>(side), static_cast<int>(side), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer_.setViewBox(QRectF(column * side * scale, row * side * scale, side * scale, side * scale));
    renderer_.render(&painter, QRectF(0, 0, side, side));
    return image;
}

void BareRenderer::drawFloats(uint32_t levelSide, uint32_t column, uint32_t row) {
    static const std::array<float, 256> kChannels = makeChannels();
    const QImage image = draw(levelSide, column, row);
    const size_t size = static_cast<size_t>(image.width()) * static_cast<size_t>(image.height()) * 4;
    float* out = tiles_.emplace_back(new float[size]).get();  // every value is written
    for (int y = 0; y < image.height(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x, out += 4) {
            out[0] = kChannels[static_cast<size_t>(qRed(line[x]))];
            out[1] = kChannels[static_cast<size_t>(qGreen(line[x]))];
            out[2] = kChannels[static_cast<size_t>(qBlue(line[x]))];
            out[3] = kChannels[static_cast<size_t>(qAlpha(line[x]))];
        }
    }
}

}  // namespace tzbench
