// Compares tiles with those of a bare renderer, bit by bit. Called by ./bench/tiles-equal.
#include <CLI/CLI.hpp>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <cstdio>
#include <ctime>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "bench/exact/FeatureDrawings.h"
#include "bench/exact/TileComparison.h"

namespace {

// Renderers of a file that was just written are not kept; these are never changed again.
void writeSettled(const QString& fileName, const std::string& text) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Truncate)) return;
    file.write(text.data(), static_cast<qint64>(text.size()));
    file.flush();
    file.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFileDevice::FileModificationTime);
}

}  // namespace

int main(int argc, char** argv) try {
    uint32_t generated = 300;
    uint32_t first = 0;
    uint32_t tiles = 400;
    double seconds = 20.0;
    bool asUsual = false;
    bool each = false;
    std::string keep;
    std::vector<std::string> files;
    CLI::App app(
        "Draws tiles of drawings as the image does and with fresh renderers of Qt, and compares all "
        "pixels.\nEnds with status 1 when one differs.",
        "tiles-equal");
    app.add_option("DRAWING", files, "drawings besides the generated ones");
    app.add_option("--generated", generated, "how many drawings to generate")->capture_default_str();
    app.add_option("--first", first, "the number of the first generated one")->capture_default_str();
    app.add_option("--tiles", tiles, "tiles of each drawing")->capture_default_str();
    app.add_flag(
        "--as-usual", asUsual,
        "leave shapes out where it pays; without, wherever it is allowed, down to the smallest cell");
    app.add_option("--keep", keep, "a folder for the generated drawings, which go otherwise");
    app.add_option("--seconds", seconds, "of processor time for a drawing at most")->capture_default_str();
    app.add_flag("--each", each, "print a line for each drawing, with the seconds so far");
    CLI11_PARSE(app, argc, argv);

    QLoggingCategory::setFilterRules(QStringLiteral("qt.svg*=false"));  // what it does not know of a drawing
    const tzsvg::CullingSettings culling =
        asUsual ? tzsvg::CullingSettings() : tzsvg::CullingSettings{1, 0, 60, 0, 0};

    tzbench::TileComparison all;
    uint64_t drawings = 0;
    uint64_t culled = 0;
    const auto compare = [&](const QString& file, uint64_t seed) {
        const tzbench::TileComparison one = tzbench::compareTiles(file, tiles, seconds, seed, culling);
        if (each) {
            std::cout << file.toStdString() << ": " << one.tiles << " tiles, " << one.ofCells << " in part, "
                      << one.trimmed << " trimmed, " << one.different << " different, "
                      << static_cast<double>(std::clock()) / CLOCKS_PER_SEC << " s" << std::endl;
        }
        if (one.tiles > 0) ++drawings;
        if (one.ofCells > 0) ++culled;
        all.tiles += one.tiles;
        all.ofCells += one.ofCells;
        all.trimmed += one.trimmed;
        all.unsteady += one.unsteady;
        all.different += one.different;
    };
    for (size_t i = 0; i < files.size(); ++i) compare(QString::fromStdString(files[i]), i);
    const QTemporaryDir ownFolder;
    const QDir folder(keep.empty() ? ownFolder.path() : QString::fromStdString(keep));
    for (uint32_t i = first; i < first + generated; ++i) {
        const QString file = folder.filePath(QString::number(i) + QStringLiteral(".svg"));
        writeSettled(file, tzbench::featureDrawing(i));
        compare(file, i);
    }
    std::cout << "Qt " << qVersion() << ": " << all.tiles << " tiles of " << drawings
              << " drawings compared, " << all.ofCells << " of them drawn in part (of " << culled
              << " drawings), " << all.trimmed << " trimmed, " << all.unsteady
              << " that Qt itself draws in two ways, " << all.different << " different\n";
    return all.different == 0 ? 0 : 1;
} catch (const std::exception& error) {
    std::fprintf(stderr, "tiles-equal: %s\n", error.what());
    return 1;
} catch (...) {
    return 1;
}
