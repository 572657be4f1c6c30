// The normalizer: against the parse of the same text by bare Qt, and how it grows with the drawing.
#include <QDomDocument>
#include <QFile>
#include <algorithm>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>

#include "bench/ChildRun.h"
#include "bench/Figures.h"
#include "bench/Table.h"
#include "normalize/Normalize.h"

namespace tzbench {
namespace {

constexpr uint32_t kMany = 100000;
constexpr uint32_t kMostShapes = 1000000;

// Seconds.
struct NormalizeRun {
    double normalize;
    double parse;
};

QByteArray bytesOf(const std::filesystem::path& file) {
    QFile in(QString::fromStdString(file.native()));
    if (!in.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read " + file.native());
    return in.readAll();
}

double normalizeSeconds(const QByteArray& bytes) {
    return secondsOf([&] {
        if (tznormalize::normalize(bytes, QString()).refused)
            throw std::runtime_error("a drawing is refused");
    });
}

double parseSeconds(const QByteArray& bytes) {
    QDomDocument document;
    return secondsOf([&] {
        if (!document.setContent(bytes, false)) throw std::runtime_error("Qt cannot read the document");
    });
}

// Each side in processes of its own, in turns; the least counts. A million shapes pass once.
NormalizeRun measure(const QByteArray& bytes, uint32_t shapes) {
    NormalizeRun least{};
    const int rounds = shapes < kMostShapes ? 3 : 1;
    for (int round = 0; round < rounds; ++round) {
        const double normalize = inChild([&] { return std::vector<double>{normalizeSeconds(bytes)}; }).at(0);
        const double parse = inChild([&] { return std::vector<double>{parseSeconds(bytes)}; }).at(0);
        least.normalize = round == 0 ? normalize : std::min(least.normalize, normalize);
        least.parse = round == 0 ? parse : std::min(least.parse, parse);
    }
    return least;
}

const NormalizeRun& normalizeRun(const Documents& documents, SceneKind kind, uint32_t shapes) {
    static std::map<std::pair<SceneKind, uint32_t>, NormalizeRun> runs;
    const std::pair key(kind, shapes);
    auto found = runs.find(key);
    if (found == runs.end())
        found = runs.emplace(key, measure(bytesOf(documents.scene(kind, shapes)), shapes)).first;
    return found->second;
}

}  // namespace

void addNormalizeFigures(const Documents& documents) {
    for (const SceneKind kind :
         {SceneKind::kFlat, SceneKind::kGrouped, SceneKind::kNested, SceneKind::kStyled, SceneKind::kPaths}) {
        addFigure(std::string("normalize: ") + nameOf(kind) + " " + std::to_string(kMany), "s",
                  Target::kAtMost, 1.5, [=, &documents] {
                      const NormalizeRun& run = normalizeRun(documents, kind, kMany);
                      return ratio(run.normalize, run.parse);
                  });
    }
    for (const SceneKind kind : {SceneKind::kGrouped, SceneKind::kStyled, SceneKind::kPaths}) {
        addFigure(std::string("normalize, a shape of 1000000 to 100000: ") + nameOf(kind), "us",
                  Target::kAtMost, 1.5, [=, &documents] {
                      const auto each = [&](uint32_t shapes) {
                          return 1e6 * normalizeRun(documents, kind, shapes).normalize / shapes;
                      };
                      return ratio(each(kMostShapes), each(kMany));
                  });
    }
}

}  // namespace tzbench
