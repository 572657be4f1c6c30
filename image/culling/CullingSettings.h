// When a part of a drawing is worth a renderer of its own, and a look at its outlines. Changed only by tests,
// which want it always.
#pragma once

#include <cstddef>

namespace tzsvg {

struct CullingSettings {
    // A drawing of fewer shapes is drawn as quickly as its smaller drawings would be looked for.
    size_t fewestShapes = 2;

    // Loading a shape costs as much as drawing some twenty times past it: a smaller drawing pays when it
    // leaves out that much.
    size_t worthLoading = 20;

    // Qt keeps the colours of some sixty gradients. Of more it works most out again for every shape that it
    // passes, which costs about as much as loading one.
    size_t keptGradients = 60;
    size_t worthLoadingWithMore = 2;

    // A tile gets a drawing of its own when that leaves out a shape whose box the tile lies in, for so many
    // shapes that are loaded: Qt follows the outline of such a shape, across the whole picture if need be.
    size_t loadedForOneLeftOut = 4;

    // The part of the picture's longer side that a tile shows at most for its outlines to be looked at: few
    // larger ones are of one colour, and most of an outline is in them.
    double smallTile = 1.0 / 8.0;

    // Cells of fewer shapes are not halved further, so that tiles share them.
    size_t fewShapes = 64;
};

}  // namespace tzsvg
