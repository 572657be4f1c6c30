// Drawings as tiled images.
#include <vector>

#include "adapters/c/Session.h"
#include "adapters/c/Structs.h"
#include "host/ImageLoading.h"
#include "host/Refusal.h"

struct TzhImage {
    std::shared_ptr<tzh::SessionState> state;  // goes after the image, which is an object of the module's
    tzhost::LoadedImage loaded;
    std::string file;
};

namespace tzh {
namespace {

struct Tile {
    CTzUser_Image image;
    TzSize size;
};

Tile tileOf(const TzhImage* image, uint32_t level, uint32_t column, uint32_t row, size_t capacity,
            uint32_t* width, uint32_t* height) {
    require(image, "image is NULL");
    require(width && height, "width or height is NULL");
    Tile tile{};
    image->loaded.drawing.refresh();
    tzhost::inStep(image->file, "tile", [&] {
        tzCheck(image->loaded.tiles->tileSize(level, {column, row}, &tile.size));
    });
    require(capacity >= size_t{tile.size.width} * tile.size.height * 4, "pixels: not enough room");
    tile.image = tzhost::inStep(image->file, "tile", [&] {
        return tzhost::fetchTile(*image->loaded.tiles, level, {column, row});
    });
    return tile;
}

void readRow(const Tile& tile, uint32_t y, float* out) {
    tile.image.readLine(0, y, tile.size.width, kTzPixelRgbaFloat, out);
}

}  // namespace
}  // namespace tzh

TzhStatus tzh_image_open(TzhImage** image, TzhSession* session, const char* file, uint32_t flags) {
    if (image) *image = nullptr;
    return tzh::guarded([&] {
        tzh::require(image, "image is NULL");
        tzh::require(session, "session is NULL");
        tzh::require((flags & ~uint32_t{TZH_NORMALIZE}) == 0, "flags: unknown bits");
        auto opened = std::make_unique<TzhImage>();
        opened->state = session->state;
        opened->file = tzh::nameOf(file, "file");
        const tzhost::Drawing drawing =
            (flags & TZH_NORMALIZE) != 0 ? tzhost::Drawing::normalized(opened->file, tzhost::Purpose::kImage)
                                         : tzhost::Drawing(opened->file);
        opened->loaded = tzhost::explainingRefusal(drawing, tzhost::Purpose::kImage, [&] {
            return tzhost::loadImage(opened->state->session.host, drawing);
        });
        *image = opened.release();
    });
}

TzhStatus tzh_image_info(const TzhImage* image, TzhImageInfo* info) {
    return tzh::guarded([&] {
        tzh::require(image, "image is NULL");
        tzh::requireStruct(info);
        const TzSize size = image->loaded.image.size();
        TzhImageInfo told{};
        told.width = size.width;
        told.height = size.height;
        tzCheck(image->loaded.tiles->tileLevelCount(&told.level_count));
        tzh::copyOut(told, info);
    });
}

TzhStatus tzh_image_level(const TzhImage* image, uint32_t level, TzhLevelInfo* info) {
    return tzh::guarded([&] {
        tzh::require(image, "image is NULL");
        tzh::requireStruct(info);
        TzTileLevel size{};
        tzCheck(image->loaded.tiles->tileLevelSize(level, &size));
        tzh::copyOut(TzhLevelInfo{0, size.width, size.height, size.tileWidth, size.tileHeight}, info);
    });
}

TzhStatus tzh_image_tile(const TzhImage* image, uint32_t level, uint32_t column, uint32_t row, float* pixels,
                         size_t capacity, uint32_t* width, uint32_t* height) {
    return tzh::guarded([&] {
        tzh::require(pixels, "pixels is NULL");
        const tzh::Tile tile = tzh::tileOf(image, level, column, row, capacity, width, height);
        for (uint32_t y = 0; y < tile.size.height; ++y)
            tzh::readRow(tile, y, pixels + size_t{y} * tile.size.width * 4);
        *width = tile.size.width;
        *height = tile.size.height;
    });
}

TzhStatus tzh_image_tile_bytes(const TzhImage* image, uint32_t level, uint32_t column, uint32_t row,
                               uint8_t* pixels, size_t capacity, uint32_t* width, uint32_t* height) {
    return tzh::guarded([&] {
        tzh::require(pixels, "pixels is NULL");
        const tzh::Tile tile = tzh::tileOf(image, level, column, row, capacity, width, height);
        const size_t values = size_t{tile.size.width} * 4;
        std::vector<float> line(values);
        for (uint32_t y = 0; y < tile.size.height; ++y) {
            tzh::readRow(tile, y, line.data());
            tzhost::toBytes(line.data(), values, pixels + y * values);
        }
        *width = tile.size.width;
        *height = tile.size.height;
    });
}

void tzh_image_free(TzhImage* image) {
    delete image;
}
