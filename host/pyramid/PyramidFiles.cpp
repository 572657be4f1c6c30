#include "host/pyramid/PyramidFiles.h"

#include <algorithm>

#include "PyramidPage.h"  // made of page.html by the build

namespace tzhost {
namespace {

uint32_t pieces(uint32_t side) {
    return (side + kPyramidTileSide - 1) / kPyramidTileSide;
}

uint32_t pieceSide(uint32_t index, uint32_t side) {
    return std::min(kPyramidTileSide, side - index * kPyramidTileSide);
}

std::string escaped(const std::string& text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
            case '<':
                out += "&lt;";
                break;
            case '&':
                out += "&amp;";
                break;
            default:
                out += c;
        }
    }
    return out;
}

// Puts a text where the page has the mark `{{name}}`.
void fillIn(std::string& page, const std::string& name, const std::string& text) {
    const std::string mark = "{{" + name + "}}";
    page.replace(page.find(mark), mark.size(), text);
}

}  // namespace

std::filesystem::path pyramidTileFile(const std::filesystem::path& folder, const PyramidTile& tile) {
    return folder / "pyramid_files" / std::to_string(tile.level) /
           (std::to_string(tile.column) + "_" + std::to_string(tile.row) + ".png");
}

std::filesystem::path pyramidDigestFile(const std::filesystem::path& folder) {
    return folder / "pyramid_files" / "drawing.sha256";
}

std::vector<PyramidTile> pyramidTiles(uint32_t level, TzSize size) {
    std::vector<PyramidTile> tiles;
    for (uint32_t row = 0; row < pieces(size.height); ++row) {
        for (uint32_t column = 0; column < pieces(size.width); ++column)
            tiles.push_back({level, column, row});
    }
    return tiles;
}

TzSize pyramidTileSize(const PyramidTile& tile, TzSize level) {
    return {pieceSide(tile.column, level.width), pieceSide(tile.row, level.height)};
}

std::string pyramidDescription(TzSize size) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<Image xmlns=\"http://schemas.microsoft.com/deepzoom/2008\" Format=\"png\" Overlap=\"0\" "
           "TileSize=\"" +
           std::to_string(kPyramidTileSide) + "\">\n  <Size Width=\"" + std::to_string(size.width) +
           "\" Height=\"" + std::to_string(size.height) + "\"/>\n</Image>\n";
}

std::string pyramidPage(const std::string& title, const std::vector<TzSize>& levels) {
    std::string sizes;
    for (const TzSize& level : levels) {
        if (!sizes.empty()) sizes += ", ";
        sizes += "[" + std::to_string(level.width) + ", " + std::to_string(level.height) + "]";
    }
    // The title last: it may look like a mark.
    std::string page = kPyramidPageTemplate;
    fillIn(page, "tile", std::to_string(kPyramidTileSide));
    fillIn(page, "levels", sizes);
    fillIn(page, "title", escaped(title));
    return page;
}

}  // namespace tzhost
