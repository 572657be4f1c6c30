// Imports: a drawing is loaded into a scene by the first scene loader that recognises it.
#pragma once

#include <cstdint>
#include <string>

#include "host/Drawing.h"
#include "host/Host.h"

namespace tzhost {

struct ImportOptions {
    // The monitor's step of this number reports a cancel; 0: none does.
    uint64_t cancelAfter = 0;
};

// What an import made.
struct ImportSummary {
    uint64_t shapes = 0;  // polygons, those of one path counted once
    uint64_t polygons = 0;
    uint64_t points = 0;
    double seconds = 0.0;  // from recognition to the end of the load
};

// Adds the drawing's items to the scene. Throws OperationError, and the scene is as it was before: steps
// "open", "recognise", "start" and "load".
ImportSummary importFile(Host& host, Scene& scene, const Drawing& drawing, const ImportOptions& options = {});

}  // namespace tzhost
