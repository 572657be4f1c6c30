// One document imported and exported, and what bare Qt takes for the same text. Measured when it is
// asked for the first time, and kept: several figures are made of the same run.
#pragma once

#include "bench/Documents.h"

namespace tzbench {

// Seconds and MiB; the least of all repetitions.
struct SceneRun {
    double parse;  // Qt's tree from the text
    double parsePeak;
    double import;  // by the host, recognition to end
    double importPeak;
    double save;           // Qt's tree of the exported document to a file
    double exportFirst;    // as imported, the first time in a process, as tzhost does it
    double exportInPlace;  // as imported, again
    // The same scene with its drawing indices rewritten; the flat document's only, else 0.
    double exportOneOrder;
    double exportReverse;
};

const SceneRun& sceneRun(const Documents& documents, SceneKind kind, uint32_t shapes);

}  // namespace tzbench
