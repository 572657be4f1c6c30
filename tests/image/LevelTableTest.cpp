// Level tables, tile places and the part of the document that a tile shows, worked out by hand.
#include "image/LevelTable.h"

#include <gtest/gtest.h>

#include <sstream>

#include "hostsdk/CTzError.h"
#include "image/TileGeometry.h"
#include "tests/common/Table.h"

using namespace tzsvg;

static TzSize sizeOf(const std::string& text) {
    return {static_cast<uint32_t>(std::stoul(text)),
            static_cast<uint32_t>(std::stoul(text.substr(text.find('x') + 1)))};
}

static std::string textOf(uint32_t width, uint32_t height) {
    return std::to_string(width) + 'x' + std::to_string(height);
}

TEST(LevelTable, levels) {
    for (const auto& row : readTable("image/levels.txt", 4)) {
        const TzTileLevel level = LevelTable(sizeOf(row[0])).level(static_cast<uint32_t>(std::stoul(row[1])));
        EXPECT_EQ(textOf(level.width, level.height), row[2]) << row[0] << ", " << row[1];
        EXPECT_EQ(textOf(level.tileWidth, level.tileHeight), row[3]) << row[0] << ", " << row[1];
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
    for (const auto& row : readTable("image/tile-sizes.txt", 3)) {
        TileKey tile{};
        std::istringstream(row[1]) >> tile.level >> tile.column >> tile.row;
        std::string told;
        try {
            const TzSize size = LevelTable(sizeOf(row[0])).tileSize(tile);
            told = textOf(size.width, size.height);
        } catch (const CTzError& error) {
            told = error.result() == kTzOutOfBounds ? "refused" : "another error";
        }
        EXPECT_EQ(told, row[2]) << row[0] << ", " << row[1];
    }
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
