// Level tables, tile places and the part of the document that a tile shows, worked out by hand.
#include "image/LevelTable.h"

#include <gtest/gtest.h>

#include "hostsdk/CTzError.h"
#include "image/TileGeometry.h"

using namespace tzsvg;

static bool operator==(const TzTileLevel& a, const TzTileLevel& b) {
    return a.width == b.width && a.height == b.height && a.tileWidth == b.tileWidth &&
           a.tileHeight == b.tileHeight;
}
static std::ostream& operator<<(std::ostream& out, const TzTileLevel& l) {
    return out << l.width << "x" << l.height << " tile " << l.tileWidth << "x" << l.tileHeight;
}

TEST(LevelTable, levels) {
    const struct {
        TzSize document;
        uint32_t key;
        TzTileLevel level;
    } rows[] = {
        {{100, 50}, 0, {1, 1, 1, 1}},
        {{100, 50}, 1, {2, 1, 1, 1}},
        {{100, 50}, 7, {128, 64, 64, 64}},
        {{100, 50}, 8, {256, 128, 256, 128}},
        {{100, 50}, 16, {65536, 32768, 256, 256}},
        {{300, 200}, 1, {2, 2, 2, 2}},
        {{300, 200}, 7, {128, 86, 86, 86}},
        {{300, 200}, 8, {256, 171, 256, 171}},
        {{300, 200}, 16, {65536, 43691, 256, 256}},
        {{256, 256}, 7, {128, 128, 128, 128}},
        {{256, 256}, 9, {512, 512, 256, 256}},
        // The short side of a very long document stays at one pixel, and its tiles too.
        {{1, 1000}, 1, {1, 2, 1, 1}},
        {{1, 1000}, 7, {1, 128, 1, 1}},
        {{1, 1000}, 8, {1, 256, 1, 256}},
        {{1, 1000}, 16, {66, 65536, 66, 256}},
        {{1000000000, 1}, 16, {65536, 1, 256, 1}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::Message()
                     << row.document.width << "x" << row.document.height << " key " << row.key);
        EXPECT_EQ(LevelTable(row.document).level(row.key), row.level);
    }
}

TEST(LevelTable, paddedSides) {
    const uint32_t rows[][2] = {{1, 1},       {2, 2},          {3, 4},
                                {100, 128},   {256, 256},      {257, 512},
                                {1000, 1024}, {65537, 131072}, {536870913, 1U << 30U}};
    for (const auto& [side, padded] : rows) EXPECT_EQ(paddedSide(side), padded) << side;
}

// The required bounds test counts pixels of a tile, not tiles of the level.
TEST(LevelTable, bounds) {
    const struct {
        TzSize document;
        TileKey tile;
        bool served;
        TzSize size;
    } rows[] = {
        {{100, 50}, {16, 255, 127}, true, {256, 256}},
        {{100, 50}, {16, 256, 0}, false, {}},
        {{100, 50}, {16, 0, 255}, true, {256, 0}},  // beyond the level's 128 rows, and still served
        {{100, 50}, {7, 1, 0}, true, {64, 64}},
        {{100, 50}, {7, 63, 0}, true, {0, 64}},
        {{100, 50}, {7, 64, 0}, false, {}},
        {{300, 200}, {16, 0, 170}, true, {256, 171}},
        {{300, 200}, {16, 0, 255}, true, {256, 171}},  // as the last row, though beyond it
        {{300, 200}, {7, 1, 0}, true, {42, 86}},
        {{100, 50}, {0, 0, 0}, true, {1, 1}},
        {{100, 50}, {0, 1, 0}, false, {}},
        {{1, 1000}, {7, 0, 1}, false, {}},  // the level has it, and it cannot be had
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::Message()
                     << row.document.width << "x" << row.document.height << " key " << row.tile.level
                     << " at " << row.tile.column << "," << row.tile.row);
        const LevelTable levels(row.document);
        try {
            const TzSize size = levels.tileSize(row.tile);
            EXPECT_TRUE(row.served);
            EXPECT_EQ(size.width, row.size.width);
            EXPECT_EQ(size.height, row.size.height);
        } catch (const CTzError& error) {
            EXPECT_FALSE(row.served);
            EXPECT_EQ(error.result(), kTzOutOfBounds);
        }
    }
}

TEST(LevelTable, tileOfPixel) {
    const LevelTable levels({300, 200});
    const auto place = levels.tileOfPixel(16, 65535, 43690);
    EXPECT_EQ(place.column, 255U);
    EXPECT_EQ(place.row, 170U);
    EXPECT_EQ(levels.tileOfPixel(7, 86, 85).column, 1U);
    EXPECT_THROW(levels.tileOfPixel(16, 65536, 0), CTzError);
    EXPECT_THROW(levels.tileOfPixel(16, 0, 43691), CTzError);
}

TEST(TileGeometry, views) {
    const struct {
        const char* name;
        TzSize document;
        TileKey tile;
        bool drawn;
        QRectF viewBox;
        QRectF target;
    } rows[] = {
        {"whole level", {100, 50}, {8, 0, 0}, true, {5, 7, 100, 50}, {0, 0, 256, 128}},
        {"inner tile", {100, 50}, {9, 1, 0}, true, {55, 7, 50, 50}, {0, 0, 256, 256}},
        {"bottom edge cut",
         {300, 200},
         {9, 0, 1},
         true,
         {5, 7 + 256 * 200.0 / 342, 150, 86 * 200.0 / 342},
         {0, 0, 256, 86}},
        {"right edge cut",
         {300, 200},
         {7, 1, 0},
         true,
         {5 + 86 * 300.0 / 128, 7, 42 * 300.0 / 128, 200},
         {0, 0, 42, 86}},
        {"begins at the edge", {100, 50}, {7, 2, 0}, false, {}, {}},
        {"beyond the edge", {100, 50}, {7, 3, 0}, false, {}, {}},
        // Sides that are powers of two: nothing is cut, and tiles beyond the document show what lies there.
        {"power of two", {256, 256}, {9, 1, 1}, true, {133, 135, 128, 128}, {0, 0, 256, 256}},
        {"power of two, beyond", {256, 256}, {9, 2, 0}, true, {261, 7, 128, 128}, {0, 0, 256, 256}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const LevelTable levels(row.document);
        const auto view = tileView(levels, row.tile, QRectF(5, 7, row.document.width, row.document.height));
        ASSERT_EQ(view.has_value(), row.drawn);
        if (!view) continue;
        const auto near = [](const QRectF& a, const QRectF& b) {
            EXPECT_NEAR(a.x(), b.x(), 1e-9);
            EXPECT_NEAR(a.y(), b.y(), 1e-9);
            EXPECT_NEAR(a.width(), b.width(), 1e-9);
            EXPECT_NEAR(a.height(), b.height(), 1e-9);
        };
        near(view->viewBox, row.viewBox);
        near(view->target, row.target);
    }
}

// A drawing of 40 by 20 units shown at 100 by 50 pixels: the first 100 by 50 units are taken.
TEST(TileGeometry, sizeAndViewBoxDiffer) {
    const auto view = tileView(LevelTable({100, 50}), {8, 0, 0}, QRectF(0, 0, 40, 20));
    ASSERT_TRUE(view);
    EXPECT_EQ(view->viewBox, QRectF(0, 0, 100, 50));
}
