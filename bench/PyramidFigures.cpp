// The pyramid export to 4,096 pixels against a bare renderer that draws and writes the same tiles one by one.
#include <algorithm>
#include <stdexcept>
#include <string>

#include "bench/BareRenderer.h"
#include "bench/ChildRun.h"
#include "bench/Figures.h"
#include "bench/Table.h"
#include "host/ModuleLibrary.h"
#include "host/pyramid/Pyramid.h"
#include "host/pyramid/PyramidFiles.h"

namespace tzbench {
namespace {

namespace fs = std::filesystem;

constexpr uint32_t kMaxLevel = 12;

uint64_t barePyramid(const fs::path& picture, const fs::path& folder) {
    BareRenderer renderer(picture);
    uint64_t written = 0;
    for (uint32_t level = 0; level <= kMaxLevel; ++level) {
        const uint32_t side = 1U << level;
        for (const tzhost::PyramidTile& tile : tzhost::pyramidTiles(level, {side, side})) {
            const fs::path file = tzhost::pyramidTileFile(folder, tile);
            fs::create_directories(file.parent_path());
            const QImage image = renderer.draw(side, tile.column, tile.row);
            if (!image.save(QString::fromStdString(file.native()), "PNG"))
                throw std::runtime_error("cannot write " + file.native());
            ++written;
        }
    }
    return written;
}

// Seconds by the clock of two programs as users start them, on all processors, in turns.
Line pyramidAgainstVips(const Documents& documents, PictureKind kind) {
    const fs::path picture = documents.picture(kind);
    const fs::path folder = documents.output("pyramid");
    const std::string scale = std::to_string((1U << kMaxLevel) / kPictureSide);
    double ours = 1e9;
    double theirs = 1e9;
    constexpr int kPasses = 3;
    for (int pass = 0; pass < kPasses; ++pass) {
        fs::remove_all(folder);
        fs::create_directories(folder);
        ours = std::min(
            ours,
            runProgram({TZHOST, "pyramid", picture.native(), (folder / "ours").native(), "--quiet"}).elapsed);
        theirs = std::min(theirs, runProgram({"vips", "dzsave", picture.native() + "[scale=" + scale + "]",
                                              (folder / "theirs").native(), "--suffix", ".png", "--tile-size",
                                              "256", "--overlap", "0"})
                                      .elapsed);
    }
    return ratio(ours, theirs);
}

// Tiles a second; ours with one thread, as the floor.
Line pyramid(const Documents& documents, PictureKind kind) {
    const fs::path picture = documents.picture(kind);
    const fs::path oursFolder = documents.output("pyramid");
    const fs::path bareFolder = documents.output("bare-pyramid");
    const std::vector<double> numbers = inChild([&] {
        tzhost::Session session(TZSVG_MODULE);
        double ours = 1e9;
        double floor = 1e9;
        uint64_t tiles = 0;
        // The host's drawing makes the application object that Qt wants.
        constexpr int kPasses = 3;
        constexpr double kEnough = 6.0;
        double spent = 0.0;
        for (int pass = 0; pass < kPasses && spent < kEnough; ++pass) {
            fs::remove_all(oursFolder);
            fs::remove_all(bareFolder);
            ours = std::min(
                ours, secondsOf([&] {
                    tiles = tzhost::writePyramid(session.host, picture, oursFolder, {kMaxLevel, 1}).written;
                }));
            uint64_t bareTiles = 0;
            floor = std::min(floor, secondsOf([&] { bareTiles = barePyramid(picture, bareFolder); }));
            spent += ours + floor;
            if (tiles != bareTiles) throw std::runtime_error("the pyramids differ");
        }
        return std::vector<double>{static_cast<double>(tiles) / ours, static_cast<double>(tiles) / floor};
    });
    // The figure is of seconds.
    return {numbers.at(0), numbers.at(1), numbers.at(1) / numbers.at(0)};
}

}  // namespace

void addPyramidFigures(const Documents& documents) {
    for (const PictureKind kind : {PictureKind::kIcon, PictureKind::kRects, PictureKind::kGradients40}) {
        const double bound = kind == PictureKind::kIcon ? 1.2 : 0.5;
        addFigure(std::string("pyramid to 4096: ") + nameOf(kind), "tiles/s", Target::kAtMost, bound,
                  [=, &documents] { return pyramid(documents, kind); });
    }
    for (const PictureKind kind : {PictureKind::kGradients40, PictureKind::kGradients200}) {
        addFigure(std::string("pyramid to 4096, of vips dzsave: ") + nameOf(kind), "s", Target::kAtMost, 1.0,
                  [=, &documents] { return pyramidAgainstVips(documents, kind); });
    }
}

}  // namespace tzbench
