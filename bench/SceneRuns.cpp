// Ours and the floor take turns, each in a process of its own. Small documents are repeated in it, so that
// neither side pays for what happens once in a process; a million shapes pass once.
#include "bench/SceneRuns.h"

#include <QDomDocument>
#include <QFile>
#include <QTextStream>
#include <algorithm>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>

#include "bench/ChildRun.h"
#include "host/ModuleLibrary.h"
#include "host/SceneLoading.h"
#include "host/SceneSaving.h"

namespace tzbench {
namespace {

namespace fs = std::filesystem;

struct Effort {
    int rounds;       // processes for each side
    int repetitions;  // in each process
};

Effort effortFor(uint32_t shapes) {
    if (shapes <= 1000) return {5, 10};
    if (shapes <= 10000) return {5, 4};
    if (shapes <= 100000) return {2, 1};
    return {1, 1};
}

// A save is short, and its first time in a process pays for the memory of those after it.
constexpr int kLeastSaves = 3;

double leastOf(int repetitions, const std::function<double()>& seconds) {
    double least = seconds();
    for (int i = 1; i < repetitions; ++i) least = std::min(least, seconds());
    return least;
}

// The text that Qt gets: lines joined, as the import joins them.
QString textOf(const fs::path& file) {
    QFile in(QString::fromStdString(file.native()));
    if (!in.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read " + file.native());
    return QString::fromUtf8(in.readAll()).remove(QLatin1Char('\n'));
}

void parse(QDomDocument& document, const QString& text) {
    if (!document.setContent(text, false)) throw std::runtime_error("Qt cannot read the document");
}

std::vector<double> bareParse(const fs::path& file, int repetitions) {
    const QString text = textOf(file);
    const double seconds = leastOf(repetitions, [&] {
        QDomDocument document;
        return secondsOf([&] { parse(document, text); });
    });
    return {seconds, peakMiB()};
}

std::vector<double> bareSave(const fs::path& file, const fs::path& out, int repetitions) {
    QDomDocument document;
    parse(document, textOf(file));
    return {leastOf(std::max(repetitions, kLeastSaves), [&] {
        return secondsOf([&] {
            QFile target(QString::fromStdString(out.native()));
            if (!target.open(QIODevice::WriteOnly)) throw std::runtime_error("cannot write " + out.native());
            QTextStream stream(&target);
            document.save(stream, 0);
        });
    })};
}

// Gives every polygon of a scene the drawing index that `index` answers for it.
void renumber(tzhost::Scene& scene, const std::function<uint32_t(uint32_t)>& index) {
    const auto mesh = scene.items().at(0).query<ITzMesh>();
    uint32_t count = 0;
    tzCheck(mesh->polygonCount(&count));
    for (uint32_t i = 0; i < count; ++i) {
        tzCheck(mesh->setPolygonTag(i, tzTag("ZORD"), tzText(std::to_string(index(i)))));
    }
}

std::vector<double> ours(const fs::path& file, const fs::path& out, bool orders, int repetitions) {
    tzhost::Session session(TZSVG_MODULE);
    tzhost::ScenePtr scene;
    const double import = leastOf(repetitions, [&] {
        scene = session.host.makeScene();
        return secondsOf([&] { tzhost::importFile(session.host, *scene, file); });
    });
    const double peak = peakMiB();
    const auto exportOnce = [&] { return secondsOf([&] { tzhost::exportFile(session.host, *scene, out); }); };
    const auto exportScene = [&] { return leastOf(std::max(repetitions, kLeastSaves), exportOnce); };
    std::vector<double> numbers{import, peak};
    numbers.push_back(exportOnce());
    numbers.push_back(exportScene());
    if (orders) {
        const uint32_t last = scene->items().at(0)->data().mesh.polygonCount() - 1;
        renumber(*scene, [](uint32_t) { return 0; });
        numbers.push_back(exportScene());
        renumber(*scene, [last](uint32_t i) { return last - i; });
        numbers.push_back(exportScene());
    }
    return numbers;
}

SceneRun measure(const Documents& documents, SceneKind kind, uint32_t shapes) {
    const fs::path file = documents.scene(kind, shapes);
    const fs::path exported = documents.output("exported.svg");
    const fs::path saved = documents.output("saved.svg");
    const bool orders = kind == SceneKind::kFlat;
    const Effort effort = effortFor(shapes);

    std::vector<double> least;
    for (int round = 0; round < effort.rounds; ++round) {
        std::vector<double> numbers = inChild([&] { return bareParse(file, effort.repetitions); });
        for (const double number :
             inChild([&] { return ours(file, exported, orders, effort.repetitions); })) {
            numbers.push_back(number);
        }
        // The elements of the documents in other orders are the same: they share this floor.
        numbers.push_back(inChild([&] { return bareSave(exported, saved, effort.repetitions); }).at(0));
        if (least.empty()) least = numbers;
        std::transform(least.begin(), least.end(), numbers.begin(), least.begin(),
                       [](double a, double b) { return std::min(a, b); });
    }
    SceneRun run{};
    run.parse = least.at(0);
    run.parsePeak = least.at(1);
    run.import = least.at(2);
    run.importPeak = least.at(3);
    run.exportFirst = least.at(4);
    run.exportInPlace = least.at(5);
    if (orders) run.exportOneOrder = least.at(6);
    if (orders) run.exportReverse = least.at(7);
    run.save = least.back();
    return run;
}

}  // namespace

const SceneRun& sceneRun(const Documents& documents, SceneKind kind, uint32_t shapes) {
    static std::map<std::pair<SceneKind, uint32_t>, SceneRun> runs;
    const auto at = runs.find({kind, shapes});
    if (at != runs.end()) return at->second;
    return runs.emplace(std::pair(kind, shapes), measure(documents, kind, shapes)).first->second;
}

}  // namespace tzbench
