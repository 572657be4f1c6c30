// Levels whose long side is under kTileSide have tiles as large as their short side, of which the module
// serves only as many as a tile has pixels: the rest of a narrow level is not to be had, and such a level is
// averaged from the one above.
#include "adapters/openimageio/TiledDrawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>

namespace tzoiio {
namespace {

constexpr size_t kChannels = 4;

uint32_t tilesOver(uint32_t side, uint32_t tile) {
    return (side + tile - 1) / tile;
}

// One pixel from those of the finer level that it covers. Colours count as far as they are opaque.
void average(const std::vector<float>& finer, TzSize size, uint32_t x, uint32_t y, float* out) {
    std::array<double, kChannels> sum{};
    int count = 0;
    for (uint32_t fineY = 2 * y; fineY < std::min(2 * y + 2, size.height); ++fineY) {
        for (uint32_t fineX = 2 * x; fineX < std::min(2 * x + 2, size.width); ++fineX, ++count) {
            const float* const pixel = finer.data() + (size_t{fineY} * size.width + fineX) * kChannels;
            for (size_t c = 0; c < 3; ++c) sum[c] += static_cast<double>(pixel[c]) * pixel[3];
            sum[3] += pixel[3];
        }
    }
    for (size_t c = 0; c < 3; ++c) out[c] = sum[3] > 0 ? static_cast<float>(sum[c] / sum[3]) : 0.0F;
    out[3] = count > 0 ? static_cast<float>(sum[3] / count) : 0.0F;
}

// Colours multiplied by their alpha, to the nearest.
void associate(uint8_t* pixels, size_t count) {
    for (uint8_t* pixel = pixels; pixel != pixels + count * kChannels; pixel += kChannels) {
        for (size_t c = 0; c < 3; ++c) pixel[c] = static_cast<uint8_t>((pixel[c] * pixel[3] + 127) / 255);
    }
}

bool areSameBytes(const void* a, const void* b, size_t size) {
    return std::memcmp(a, b, size) == 0;
}

void toPixels(const float* values, size_t count, bool associated, uint8_t* pixels) {
    tzhost::toBytes(values, count * kChannels, pixels);
    if (associated) associate(pixels, count);
}

}  // namespace

TiledDrawing::TiledDrawing(const OpenOptions& options) : opened_(openDrawing(options)) {
    tzCheck(opened_.image.tiles->tileLevelCount(&moduleLevels_));
    for (uint32_t i = 0; i < moduleLevels_; ++i) {
        const Level level = moduleLevel(i);
        if (std::max(level.size.width, level.size.height) <= options.size) levels_.push_back(level);
    }
    if (levels_.empty()) throw CTzError(kTzFailed);
}

TiledDrawing::~TiledDrawing() {
    if (!isRead_) closeUnread(std::move(opened_));
}

TiledDrawing::Level TiledDrawing::moduleLevel(uint32_t tileLevel) const {
    Level level{tileLevel, {}, {}, false};
    tzCheck(opened_.image.tiles->tileLevelSize(tileLevel, &level.tiles));
    level.size = {level.tiles.width, level.tiles.height};
    level.isServed = tilesOver(level.size.width, level.tiles.tileWidth) <= level.tiles.tileWidth &&
                     tilesOver(level.size.height, level.tiles.tileHeight) <= level.tiles.tileHeight;
    return level;
}

void TiledDrawing::readTile(int level, uint32_t x, uint32_t y, bool associated, uint8_t* pixels) const {
    isRead_ = true;
    const Level& of = levels_[static_cast<size_t>(level)];
    opened_.image.drawing.refresh();
    if (of.tiles.tileWidth != kTileSide || of.tiles.tileHeight != kTileSide)
        return readRows(of, x, y, associated, pixels);
    const CTzUser_Image tile =
        tzhost::fetchTile(*opened_.image.tiles, of.tileLevel, {x / kTileSide, y / kTileSide});
    // Most deep tiles are of one colour: a row like the one above it is copied.
    std::array<std::array<float, kTileSide * kChannels>, 2> rows;
    constexpr size_t kRowBytes = kTileSide * kChannels;
    for (uint32_t line = 0; line < kTileSide; ++line) {
        const auto& above = rows[(line + 1) % 2];
        auto& row = rows[line % 2];
        uint8_t* const out = pixels + line * kRowBytes;
        tile.readLine(0, line, kTileSide, kTzPixelRgbaFloat, row.data());
        if (line > 0 && areSameBytes(row.data(), above.data(), sizeof row)) {
            std::memcpy(out, out - kRowBytes, kRowBytes);
        } else {
            toPixels(row.data(), kTileSide, associated, out);
        }
    }
}

// A level with tiles of another size, row by row.
void TiledDrawing::readRows(const Level& level, uint32_t x, uint32_t y, bool associated,
                            uint8_t* pixels) const {
    std::memset(pixels, 0, size_t{kTileSide} * kTileSide * kChannels);
    const uint32_t width = std::min(kTileSide, level.size.width - x);
    const uint32_t height = std::min(kTileSide, level.size.height - y);
    const std::vector<float> whole = level.isServed ? std::vector<float>() : wholeLevel(level);
    std::array<float, kTileSide * kChannels> row{};
    for (uint32_t line = 0; line < height; ++line) {
        const float* values = row.data();
        if (level.isServed) {
            tzCheck(opened_.image.samples->sampleLine(moduleLevels_ - 1 - level.tileLevel, x, y + line, width,
                                                      kTzPixelRgbaFloat, row.data()));
        } else {
            values = whole.data() + (size_t{y + line} * level.size.width + x) * kChannels;
        }
        toPixels(values, width, associated, pixels + size_t{line} * kTileSide * kChannels);
    }
}

// All pixels of a level under kTileSide, or of the first one that is not: from the module when it serves it,
// else averaged.
std::vector<float> TiledDrawing::wholeLevel(const Level& level) const {
    std::vector<float> pixels(size_t{level.size.width} * level.size.height * kChannels);
    if (level.isServed) {
        for (uint32_t y = 0; y < level.size.height; ++y) {
            tzCheck(opened_.image.samples->sampleLine(
                moduleLevels_ - 1 - level.tileLevel, 0, y, level.size.width, kTzPixelRgbaFloat,
                pixels.data() + size_t{y} * level.size.width * kChannels));
        }
        return pixels;
    }
    const Level above = moduleLevel(level.tileLevel - 1);
    const std::vector<float> finer = wholeLevel(above);
    for (uint32_t y = 0; y < level.size.height; ++y) {
        for (uint32_t x = 0; x < level.size.width; ++x)
            average(finer, above.size, x, y, pixels.data() + (size_t{y} * level.size.width + x) * kChannels);
    }
    return pixels;
}

}  // namespace tzoiio
