// Import and export: against bare Qt, and how their own share grows with the document.
#include <algorithm>
#include <string>

#include "bench/Figures.h"
#include "bench/SceneRuns.h"
#include "bench/Table.h"

namespace tzbench {
namespace {

constexpr uint32_t kMost = 1000000;

struct Sized {
    SceneKind kind;
    uint32_t shapes;
};

// A million shapes take half a minute a run: the three kinds whose growth is a figure.
constexpr Sized kScenes[] = {
    {SceneKind::kFlat, 1000},      {SceneKind::kFlat, 10000},    {SceneKind::kFlat, 100000},
    {SceneKind::kFlat, kMost},     {SceneKind::kGrouped, 1000},  {SceneKind::kGrouped, 10000},
    {SceneKind::kGrouped, 100000}, {SceneKind::kGrouped, kMost}, {SceneKind::kNested, 1000},
    {SceneKind::kNested, 10000},   {SceneKind::kNested, 100000}, {SceneKind::kNested, kMost},
    {SceneKind::kStyled, 1000},    {SceneKind::kStyled, 10000},  {SceneKind::kStyled, 100000},
    {SceneKind::kPaths, 1000},     {SceneKind::kPaths, 10000},   {SceneKind::kPaths, 100000},
};

// Microseconds for one shape, of a million shapes against ten thousand. An import takes no longer than the
// Qt's tree, so there is nothing beyond that to compare: all of it is.
Line importGrowth(const Documents& documents, SceneKind kind) {
    const auto each = [&](uint32_t shapes) {
        return 1e6 * sceneRun(documents, kind, shapes).import / shapes;
    };
    return ratio(each(kMost), each(10000));
}

// Of an export what it takes beyond Qt's save. What is less than a quarter of that is not told from
// nothing, and counts as a quarter: by so much single passes of a million shapes differ.
Line exportGrowth(const Documents& documents, SceneKind kind, double SceneRun::*ours) {
    const auto each = [&](uint32_t shapes) {
        const SceneRun& run = sceneRun(documents, kind, shapes);
        return 1e6 * std::max(run.*ours - run.save, run.save / 4) / shapes;
    };
    return ratio(each(kMost), each(10000));
}

}  // namespace

void addSceneFigures(const Documents& documents) {
    const auto run = [&documents](const Sized& of) -> const SceneRun& {
        return sceneRun(documents, of.kind, of.shapes);
    };
    for (const Sized& of : kScenes) {
        const std::string document = nameOf(of.kind) + std::string(" ") + std::to_string(of.shapes);
        addFigure("import: " + document, "s", Target::kAtMost, 1.4,
                  [=] { return ratio(run(of).import, run(of).parse); });
        addFigure("export: " + document, "s", Target::kAtMost, 2.5,
                  [=] { return ratio(run(of).exportInPlace, run(of).save); });
        if (of.shapes >= 100000) {
            addFigure("import, peak memory: " + document, "MiB", Target::kAtMost, 1.5,
                      [=] { return ratio(run(of).importPeak, run(of).parsePeak); });
        }
    }

    for (const SceneKind kind : {SceneKind::kFlat, SceneKind::kGrouped, SceneKind::kNested}) {
        addFigure(std::string("import, a shape of 1000000 to 10000: ") + nameOf(kind), "us", Target::kAtMost,
                  1.5, [=, &documents] { return importGrowth(documents, kind); });
    }
    struct Export {
        const char* name;
        SceneKind kind;
        double SceneRun::*seconds;
    };
    for (const Export& of : {Export{"flat", SceneKind::kFlat, &SceneRun::exportInPlace},
                             Export{"grouped", SceneKind::kGrouped, &SceneRun::exportInPlace},
                             Export{"nested", SceneKind::kNested, &SceneRun::exportInPlace},
                             Export{"one z-order", SceneKind::kFlat, &SceneRun::exportOneOrder},
                             Export{"reverse z-order", SceneKind::kFlat, &SceneRun::exportReverse}}) {
        addFigure(std::string("export beyond the save, a shape of 1000000 to 10000: ") + of.name, "us",
                  Target::kAtMost, 1.5,
                  [=, &documents] { return exportGrowth(documents, of.kind, of.seconds); });
    }
}

}  // namespace tzbench
