// When a part of a drawing is worth a renderer of its own. Changed only by tests,
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

    // Cells of fewer shapes are not halved further, so that tiles share them.
    size_t fewShapes = 64;
};

}  // namespace tzsvg
