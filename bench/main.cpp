// The benchmark: every figure that the project holds itself to, with its floor measured in the same run.
// Called by ./bench/run, which makes the table of what is written here.
#include <benchmark/benchmark.h>

#include <QHashFunctions>

#include "bench/Figures.h"

int main(int argc, char** argv) {
    // As tzhost does, for both sides.
#if QT_VERSION >= QT_VERSION_CHECK(6, 2, 0)
    QHashSeed::setDeterministicGlobalSeed();
#else
    qSetGlobalQHashSeed(0);
#endif
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    const tzbench::Documents documents;
    tzbench::addSceneFigures(documents);
    tzbench::addNormalizeFigures(documents);
    tzbench::addProgramFigures(documents);
    tzbench::addTileFigures(documents);
    tzbench::addPyramidFigures(documents);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
