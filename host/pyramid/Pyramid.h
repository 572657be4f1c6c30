// A drawing as a pyramid of picture files: the Deep Zoom layout, and a page to look around in it. Called by
// `tzhost pyramid`; benchmarks call it as it does.
//
//     FOLDER/pyramid.dzi                      sizes, for viewers of the format
//     FOLDER/pyramid_files/LEVEL/COL_ROW.png  tiles of 256 by 256 pixels, cut at the right and bottom edge
//     FOLDER/pyramid_files/drawing.sha256     which drawing the tiles are of
//     FOLDER/index.html                       the page; needs nothing but the tiles
//
// Levels count from the coarsest, 0 being 1 by 1 pixel, as the format counts them and as the level-sample
// interface does: the long side of level n is 2^n pixels.
#pragma once

#include <cstdint>
#include <filesystem>

#include "host/Drawing.h"
#include "host/Host.h"

namespace tzhost {

struct PyramidOptions {
    uint32_t maxLevel = 12;
    uint32_t threads = 1;
};

struct PyramidSummary {
    uint64_t written = 0;  // tiles
    uint64_t kept = 0;     // tiles that were there already
    double seconds = 0.0;
};

// Writes all levels up to maxLevel. Existing tiles of the same drawing (same bytes) are kept: files are
// renamed to their final names when they are complete, so an interrupted run resumes where it stopped. Tiles
// of another drawing, or of an earlier state of this one, are drawn again. Files that the drawing links to
// are not compared. The page and the .dzi are written last. Throws OperationError.
PyramidSummary writePyramid(const Host& host, const Drawing& drawing, const std::filesystem::path& folder,
                            const PyramidOptions& options);

}  // namespace tzhost
