// Whole runs of tzhost on a million shapes, process start, scene file and exit included, against the module's
// own seconds for the same work; and their memory against Qt's tree. And of many drawings, on two processors
// against one.
#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "bench/ChildRun.h"
#include "bench/Figures.h"
#include "bench/SceneRuns.h"
#include "bench/Table.h"

namespace tzbench {
namespace {

constexpr uint32_t kShapes = 1000000;
constexpr double kMostMiBAbove = 1536;

// The system's share, of half a gigabyte written and read, differs most from run to run: the least of three.
ProgramRun leastOfThree(const std::vector<std::string>& arguments) {
    ProgramRun least = runProgram(arguments);
    for (int i = 1; i < 3; ++i) {
        const ProgramRun run = runProgram(arguments);
        if (run.seconds < least.seconds) least = run;
    }
    return least;
}

// Drawings of a usual size, by one run: the time on the wall with two jobs, and with one. The least of five
// each, in turns, since others work on the machine.
Line manyDrawings(const Documents& documents) {
    constexpr int kDrawings = 1000;
    constexpr uint32_t kShapesEach = 100;
    const std::filesystem::path drawing = documents.scene(SceneKind::kGrouped, kShapesEach);
    const std::filesystem::path folder = documents.output("drawings");
    std::filesystem::create_directory(folder);
    std::vector<std::string> command = {TZHOST,   "import", "--output", documents.output("scenes"),
                                        "--jobs", ""};
    for (int i = 0; i < kDrawings; ++i) {
        command.push_back(folder / (std::to_string(i) + ".svg"));
        std::filesystem::copy_file(drawing, command.back());
    }
    double least[] = {1e9, 1e9};
    for (int i = 0; i < 10; ++i) {
        std::filesystem::remove_all(documents.output("scenes"));
        command[5] = i % 2 == 0 ? "1" : "2";
        least[i % 2] = std::min(least[i % 2], runProgram(command).elapsed);
    }
    return ratio(least[1], least[0]);
}

}  // namespace

void addProgramFigures(const Documents& documents) {
    const auto run = [&documents](const char* command) -> const ProgramRun& {
        static std::map<std::string, ProgramRun> runs;
        const auto at = runs.find(command);
        if (at != runs.end()) return at->second;
        const std::string in = documents.scene(SceneKind::kFlat, kShapes);
        const std::string scene = documents.output("scene.json");
        const std::string out = documents.output("program.svg");
        const std::string name = command;
        if (name == "export" && !std::filesystem::exists(scene)) runProgram({TZHOST, "import", in, scene});
        const auto [from, to] = name == "import"   ? std::pair(in, scene)
                                : name == "export" ? std::pair(scene, out)
                                                   : std::pair(in, out);
        return runs.emplace(name, leastOfThree({TZHOST, name, from, to})).first->second;
    };
    const auto own = [&documents]() -> const SceneRun& {
        return sceneRun(documents, SceneKind::kFlat, kShapes);
    };
    const auto add = [&](const char* command, const std::function<double()>& ownSeconds) {
        const std::string name = std::string("tzhost ") + command + ": flat 1000000";
        addFigure(name, "s", Target::kAtMost, 2.0, [=] { return ratio(run(command).seconds, ownSeconds()); });
        addFigure(name + ", MiB above the tree", "MiB", Target::kAtMost, kMostMiBAbove, [=] {
            const double peak = run(command).peakMiB;
            return Line{peak, own().parsePeak, std::max(0.0, peak - own().parsePeak)};
        });
    };
    addFigure("tzhost import: 1000 drawings, 2 jobs to 1", "s", Target::kAtMost, 0.6,
              [&documents] { return manyDrawings(documents); });
    add("import", [=] { return own().import; });
    add("export", [=] { return own().exportFirst; });
    add("roundtrip", [=] { return own().import + own().exportFirst; });
}

}  // namespace tzbench
