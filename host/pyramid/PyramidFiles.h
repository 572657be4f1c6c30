// The names and the text files of a pyramid. Called by writePyramid().
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "hostsdk/ITzImage.h"

namespace tzhost {

constexpr uint32_t kPyramidTileSide = 256;

// A tile of the pyramid.
struct PyramidTile {
    uint32_t level;
    uint32_t column;
    uint32_t row;
};

std::filesystem::path pyramidTileFile(const std::filesystem::path& folder, const PyramidTile& tile);

// Says which drawing the tiles are of.
std::filesystem::path pyramidDigestFile(const std::filesystem::path& folder);

// The tiles of a level of that size, row by row, and the size of one of them.
std::vector<PyramidTile> pyramidTiles(uint32_t level, TzSize size);
TzSize pyramidTileSize(const PyramidTile& tile, TzSize level);

// The description file, of a pyramid whose finest level has that size.
std::string pyramidDescription(TzSize size);

// The page, of a pyramid with these levels, the coarsest first.
std::string pyramidPage(const std::string& title, const std::vector<TzSize>& levels);

}  // namespace tzhost
