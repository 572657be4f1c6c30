// The figures, by what they measure. main() has them added in this order, which is the table's.
#pragma once

#include "bench/Documents.h"

namespace tzbench {

void addSceneFigures(const Documents& documents);      // import, export, growth, memory
void addNormalizeFigures(const Documents& documents);  // of drawings against Qt's parse
void addProgramFigures(const Documents& documents);    // whole runs of tzhost on a million shapes
void addTileFigures(const Documents& documents);       // first, cached and concurrent tiles
void addPyramidFigures(const Documents& documents);

}  // namespace tzbench
