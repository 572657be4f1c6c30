// Threads take tiles from one list; the calling thread reports progress and asks for a cancel.
#include "host/pyramid/Pyramid.h"

#include <QCryptographicHash>
#include <QFile>
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <fstream>
#include <functional>
#include <iterator>
#include <mutex>
#include <optional>
#include <system_error>
#include <vector>

#include "host/ImageLoading.h"
#include "host/core/Observer.h"
#include "host/core/OperationError.h"
#include "host/core/Utf8.h"
#include "host/io/Files.h"
#include "host/pyramid/PngFile.h"
#include "host/pyramid/PyramidFiles.h"
#include "host/pyramid/TilePixels.h"
#include "host/pyramid/WorkerThreads.h"

namespace tzhost {
namespace {

namespace fs = std::filesystem;

// An image caches the tiles it has drawn. After this many, a gigabyte at most, a new image is loaded.
constexpr size_t kTilesPerImage = 1024;

// The levels by key, the coarsest first.
std::vector<TzSize> levelSizes(const LoadedImage& loaded) {
    uint32_t count = 0;
    tzCheck(loaded.samples->sampleLevelCount(&count));
    std::vector<TzSize> sizes(count);
    for (uint32_t level = 0; level < count; ++level)
        tzCheck(loaded.samples->sampleLevelSize(level, &sizes[level]));
    return sizes;
}

// One tile of the pyramid.
QImage drawTile(const LoadedImage& loaded, const std::vector<TzSize>& levels, const PyramidTile& tile) {
    loaded.drawing.refresh();
    const TzSize level = levels[tile.level];
    TzTileLevel of{};
    const uint32_t fromFinest = static_cast<uint32_t>(levels.size()) - 1 - tile.level;
    tzCheck(loaded.tiles->tileLevelSize(fromFinest, &of));
    const TzSize size = pyramidTileSize(tile, level);
    if (size.width <= of.tileWidth && size.height <= of.tileHeight)
        return readPicture(fetchTile(*loaded.tiles, fromFinest, {tile.column, tile.row}), size);
    // A small level is one tile of the pyramid but several of the image. Of a very long drawing the image may
    // not have all of them: fall back to the next finer level, scaled down.
    try {
        return readLevel(*loaded.samples, tile.level, level);
    } catch (const CTzError& error) {
        if (error.result() != kTzOutOfBounds) throw;
    }
    return drawTile(loaded, levels, {tile.level + 1, tile.column, tile.row})
        .convertToFormat(QImage::Format_ARGB32)
        .scaled(static_cast<int>(size.width), static_cast<int>(size.height), Qt::IgnoreAspectRatio,
                Qt::SmoothTransformation);
}

void writeFile(const fs::path& file, std::string_view bytes) {
    OutputFile out(file, "write");
    out.write(bytes);
    out.commit();
}

std::string digestOf(const std::string& fileName) {
    QFile file(QString::fromStdString(fileName));
    QCryptographicHash digest(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !digest.addData(&file)) throw CTzError(kTzFailed);
    return digest.result().toHex().toStdString() + "\n";
}

// Notes in the folder which drawing its tiles are of, unless it says so already. Returns the time of that
// note: older tiles are of another drawing.
fs::file_time_type drawnSince(const fs::path& folder, const std::string& digest) {
    const fs::path file = pyramidDigestFile(folder);
    std::ifstream present(file, std::ios::binary);
    if (std::string(std::istreambuf_iterator<char>(present), {}) != digest) writeFile(file, digest);
    return fs::last_write_time(file);
}

bool isThere(const fs::path& file, fs::file_time_type notBefore) {
    std::error_code error;
    const auto written = fs::last_write_time(file, error);
    return !error && written >= notBefore;
}

// Tiles that are being drawn: a list, how far it is, and the first failure.
class TileRun {
  public:
    TileRun(const std::vector<PyramidTile>& tiles, std::function<void(const PyramidTile&)> draw)
        : tiles_(tiles), draw_(std::move(draw)) {}

    // What each thread does: takes tiles until there are none left, or one has failed.
    void work() noexcept {
        while (const PyramidTile* const tile = next()) {
            try {
                draw_(*tile);
            } catch (...) {
                stop(std::current_exception());
            }
            const std::lock_guard held(lock_);
            if (++finished_ == tiles_.size()) changed_.notify_one();
        }
    }

    // Waits for 100 ms, or until all are done or one has failed; returns the number of tiles finished since
    // the last call. Threads do not wake it for each tile: that would slow them down.
    uint32_t waitForProgress() {
        std::unique_lock held(lock_);
        changed_.wait_for(held, std::chrono::milliseconds(100),
                          [&] { return finished_ == tiles_.size() || failure_; });
        const size_t news = finished_ - reported_;
        reported_ = finished_;
        return static_cast<uint32_t>(news);
    }

    bool done() {
        const std::lock_guard held(lock_);
        return failure_ || reported_ == tiles_.size();
    }

    // Threads end after their current tile; the first reason is kept.
    void stop(std::exception_ptr reason) {
        const std::lock_guard held(lock_);
        if (!failure_) failure_ = std::move(reason);
        next_ = tiles_.size();
        changed_.notify_one();
    }

    void rethrow() {
        if (failure_) std::rethrow_exception(failure_);
    }

  private:
    const PyramidTile* next() {
        const std::lock_guard held(lock_);
        return next_ < tiles_.size() ? &tiles_[next_++] : nullptr;
    }

    const std::vector<PyramidTile>& tiles_;
    const std::function<void(const PyramidTile&)> draw_;
    std::mutex lock_;  // guards all below
    std::condition_variable changed_;
    size_t next_ = 0;
    size_t finished_ = 0;
    size_t reported_ = 0;
    std::exception_ptr failure_;
};

// Draws and writes tiles on several threads until all are written or the user cancels.
void writeTiles(const std::vector<PyramidTile>& tiles, uint32_t threads, Observer& observer,
                Progress& progress, const std::function<void(const PyramidTile&)>& draw) {
    TileRun run(tiles, draw);
    WorkerThreads workers(threads, [&](uint32_t) { run.work(); });
    while (!run.done()) {
        progress.step(run.waitForProgress());
        progress.update();
        if (observer.cancelled()) run.stop(std::make_exception_ptr(CTzError(kTzCancelled)));
    }
    workers.join();
    run.rethrow();
}

}  // namespace

PyramidSummary writePyramid(const Host& host, const Drawing& drawing, const fs::path& folder,
                            const PyramidOptions& options) {
    const auto began = std::chrono::steady_clock::now();
    const std::string& name = drawing.name();
    std::optional<LoadedImage> loaded = loadImage(host, drawing);
    const std::vector<TzSize> levels = inStep(name, "levels", [&] { return levelSizes(*loaded); });
    if (levels.empty()) throw OperationError(name, "levels", kTzFailed);
    const uint32_t finest = std::min(options.maxLevel, static_cast<uint32_t>(levels.size()) - 1);

    PyramidSummary summary;
    std::vector<PyramidTile> missing;
    const std::string digest = inStep(name, "read", [&] { return digestOf(drawing.readName()); });
    inStep(folder.native(), "write", [&] {
        fs::create_directories(pyramidDigestFile(folder).parent_path());
        const fs::file_time_type since = drawnSince(folder, digest);
        for (uint32_t level = 0; level <= finest; ++level) {
            fs::create_directories(pyramidTileFile(folder, {level, 0, 0}).parent_path());
            for (const PyramidTile& tile : pyramidTiles(level, levels[level])) {
                if (isThere(pyramidTileFile(folder, tile), since)) {
                    ++summary.kept;
                } else {
                    missing.push_back(tile);
                }
            }
        }
    });

    Progress progress(host.observer(), "drawing " + name, missing.size());
    for (size_t first = 0; first < missing.size(); first += kTilesPerImage) {
        if (first > 0) loaded = loadImage(host, drawing);
        const auto begin = missing.begin() + static_cast<std::ptrdiff_t>(first);
        const std::vector<PyramidTile> batch(
            begin, begin + static_cast<std::ptrdiff_t>(std::min(kTilesPerImage, missing.size() - first)));
        inStep(name, "tile", [&] {
            writeTiles(batch, options.threads, host.observer(), progress, [&](const PyramidTile& tile) {
                writeFile(pyramidTileFile(folder, tile), pngBytes(drawTile(*loaded, levels, tile)));
            });
        });
    }
    progress.close();

    writeFile(folder / "pyramid.dzi", pyramidDescription(levels[finest]));
    writeFile(folder / "index.html", pyramidPage(toOneLine(fs::path(drawing.name()).filename().native()),
                                                 {levels.begin(), levels.begin() + finest + 1}));
    summary.written = missing.size();
    summary.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
    return summary;
}

}  // namespace tzhost
