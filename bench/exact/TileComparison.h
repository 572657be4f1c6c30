// Compares tiles as the image draws them with what a fresh renderer of Qt's draws of the whole drawing.
#pragma once

#include <QString>
#include <cstdint>

#include "image/culling/CullingSettings.h"

namespace tzbench {

struct TileComparison {
    uint64_t tiles = 0;
    uint64_t ofCells = 0;    // of those, drawn by a renderer of a part of the drawing
    uint64_t trimmed = 0;    // of which outlines were trimmed
    uint64_t unsteady = 0;   // that Qt itself draws in two ways, and the image in one of them
    uint64_t different = 0;  // from all that Qt draws, by a pixel or more
};

// Some `count` tiles of a drawing, at its borders, at edges of its shapes and at random, of all levels; fewer
// when they take more than `seconds` of processor time, none of a file that is no drawing. What is different
// is named on standard error. The same tiles for the same `seed`.
TileComparison compareTiles(const QString& fileName, uint32_t count, double seconds, uint64_t seed,
                            const tzsvg::CullingSettings& culling);

}  // namespace tzbench
