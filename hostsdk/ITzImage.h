// Images: pixels by row and column, as tiles of several levels, and as samples of those levels. What image
// loaders make and hosts read, and what the host's image service makes and modules fill.
//
// Pixels are counted from 0, x to the right and y downwards; row 0 is the top one. Where an operation moves
// pixel values, `type` says how they lie in memory: in native byte order, one pixel after the other, rows one
// after the other without gaps.
//
// The two interfaces for levels number them in opposite directions: ITzTileImage from the finest level on,
// ITzImageLevelSample from the coarsest. With n levels, level i of the one is level n - 1 - i of the other.
#pragma once

#include "hostsdk/ITzObject.h"

// How an image keeps its pixels.
using TzPixelFormat = uint32_t;
constexpr TzPixelFormat kTzFormatRgbaFloat =
    4;  // red, green, blue, alpha as 32-bit floats, 0 to 1, straight alpha

// How pixel values lie in memory while they are moved.
using TzPixelType = uint32_t;
constexpr TzPixelType kTzPixelRgbaFloat =
    12;  // four 32-bit floats: red, green, blue, alpha; 16 bytes a pixel

// A width and a height in pixels.
struct TzSize {
    uint32_t width;
    uint32_t height;
};
static_assert(sizeof(TzSize) == 8 && std::is_trivial_v<TzSize>);

// One level of a tiled image: its size, and the size of its full tiles, all in pixels.
struct TzTileLevel {
    uint32_t width;
    uint32_t height;
    uint32_t tileWidth;
    uint32_t tileHeight;
};
static_assert(sizeof(TzTileLevel) == 16 && std::is_trivial_v<TzTileLevel>);

// Where a pixel lies in a tiled level: the tile's column and row, counted from 0.
struct TzTilePlace {
    uint32_t column;
    uint32_t row;
};
static_assert(sizeof(TzTilePlace) == 8 && std::is_trivial_v<TzTilePlace>);

class ITzImage : public ITzObject {
  public:
    static constexpr char kId[] = "tz.image/1";

    // The size in pixels. [any thread]
    virtual TzResult size(TzSize* out) noexcept = 0;

    // The format in which the image keeps its pixels. [any thread]
    virtual TzResult format(TzPixelFormat* out) noexcept = 0;

    // Reads one pixel into `out`, which has room for one value of `type`. kTzOutOfBounds outside the image,
    // kTzNotSupported for a type that the image cannot give. [any thread]
    virtual TzResult readPixel(uint32_t x, uint32_t y, TzPixelType type, void* out) noexcept = 0;

    // Reads `count` pixels of row y from column x on into `out`, which has room for `count` values of `type`.
    // Codes as above; kTzOutOfBounds when any pixel of the range is outside. What `out` holds after a failure
    // is undefined. [any thread]
    virtual TzResult readLine(uint32_t x, uint32_t y, uint32_t count, TzPixelType type,
                              void* out) noexcept = 0;

  protected:
    ~ITzImage() = default;
};

// Writing into an image: asked of the image by query(). Images of the image service have it.
class ITzImageWriter : public ITzObject {
  public:
    static constexpr char kId[] = "tz.imageWriter/1";

    // Writes the rectangle of width * height pixels whose top left pixel is (x, y): `pixels` holds its rows,
    // `byteCount` bytes in all. kTzOutOfBounds when the rectangle passes the image's edge, kTzInvalidArgument
    // when byteCount is not that of the rectangle in `type`, kTzNotSupported for a type that the image does
    // not take; nothing is written then. Rectangles that do not overlap may be written at once; nobody reads
    // an image while it is written. [any thread]
    virtual TzResult writeRows(uint32_t x, uint32_t y, TzSize rectangle, TzPixelType type, const void* pixels,
                               uint64_t byteCount) noexcept = 0;

  protected:
    ~ITzImageWriter() = default;
};

// An image as tiles of several levels, level 0 being the finest. All tiles of a level have the same full
// size; the image of a tile has it too, also at the right and bottom edge, where tileSize() tells how much of
// it belongs to the level. Tiles are shared: who gets one does not write into it.
class ITzTileImage : public ITzObject {
  public:
    static constexpr char kId[] = "tz.tileImage/1";

    // The number of levels. [any thread]
    virtual TzResult tileLevelCount(uint32_t* count) noexcept = 0;

    // Size and tile size of a level. kTzOutOfBounds beyond the last level. [any thread]
    virtual TzResult tileLevelSize(uint32_t level, TzTileLevel* out) noexcept = 0;

    // The image of one tile, made first where it must be. kTzOutOfBounds beyond the last level or for a place
    // that the image does not serve. [any thread]
    virtual TzResult tile(uint32_t level, TzTilePlace place, ITzImage** out) noexcept = 0;

    // How much of a tile, from its top left pixel on, belongs to the level. Codes as for tile(). [any thread]
    virtual TzResult tileSize(uint32_t level, TzTilePlace place, TzSize* out) noexcept = 0;

    // The tile that holds a pixel of a level. kTzOutOfBounds beyond the last level or outside the level.
    // [any thread]
    virtual TzResult tileOfPixel(uint32_t level, uint32_t x, uint32_t y, TzTilePlace* out) noexcept = 0;

  protected:
    ~ITzTileImage() = default;
};

// The pixels of the levels, level 0 being the coarsest.
class ITzImageLevelSample : public ITzObject {
  public:
    static constexpr char kId[] = "tz.imageLevelSample/1";

    // The number of levels. [any thread]
    virtual TzResult sampleLevelCount(uint32_t* count) noexcept = 0;

    // The size of a level in pixels. kTzOutOfBounds beyond the last level. [any thread]
    virtual TzResult sampleLevelSize(uint32_t level, TzSize* out) noexcept = 0;

    // As ITzImage::readPixel and readLine, at a level; also kTzOutOfBounds beyond the last level. A pixel may
    // have to be drawn first, and the codes of what that takes come out as well. [any thread]
    virtual TzResult samplePixel(uint32_t level, uint32_t x, uint32_t y, TzPixelType type,
                                 void* out) noexcept = 0;
    virtual TzResult sampleLine(uint32_t level, uint32_t x, uint32_t y, uint32_t count, TzPixelType type,
                                void* out) noexcept = 0;

  protected:
    ~ITzImageLevelSample() = default;
};
