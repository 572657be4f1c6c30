// See the header. CSVGImage owns a pool; TileRenderer borrows from it.
#include "image/RendererPool.h"

#include <QStringList>
#include <algorithm>
#include <mutex>

#include "image/DocumentGuard.h"
#include "image/DrawingCost.h"

namespace tzsvg {

std::unique_ptr<QSvgRenderer> loadRenderer(const QString& fileName, QStringList* linkedFiles) {
    const std::optional<SafeDocument> document = inspectDocument(fileName);
    if (!document) return nullptr;
    if (linkedFiles) *linkedFiles = document->linkedFiles;
    const auto load = [&]() -> std::unique_ptr<QSvgRenderer> {
        auto renderer = std::make_unique<QSvgRenderer>();
        const bool loaded =
            document->bytes.isEmpty() ? renderer->load(fileName) : renderer->load(document->bytes);
        return loaded ? std::move(renderer) : nullptr;
    };
    std::unique_ptr<QSvgRenderer> renderer = load();
    if (!renderer || !drawsWithinLimits(*renderer)) return nullptr;
    // Drawing it has started an animation.
    return renderer->animated() ? load() : std::move(renderer);
}

// A renderer and the state of the files that it was loaded from.
struct RendererPool::Loaded {
    struct Source {
        QString fileName;
        FileStamp stamp;
    };

    bool isCurrent() const {
        return std::all_of(sources.begin(), sources.end(), [](const Source& source) {
            return FileStamp::of(source.fileName) == source.stamp;
        });
    }

    // An animated document moves on from the moment it is first drawn; and a change so soon after the last
    // one that the file's time stays the same would not be noticed.
    bool mayBeKept() const {
        return !renderer->animated() && std::all_of(sources.begin(), sources.end(), [](const Source& source) {
            return source.stamp.isSettled();
        });
    }

    std::unique_ptr<QSvgRenderer> renderer;
    QRectF ownViewBox;
    std::vector<Source> sources;
    bool keep = false;
};

RendererPool::RendererPool(QString fileName, CTzUser_ThreadMutex lock)
    : fileName_(std::move(fileName)), lock_(std::move(lock)) {}

RendererPool::~RendererPool() = default;

RendererPool::Lease RendererPool::lend() {
    std::unique_ptr<Loaded> loaded = takeIdle();
    while (loaded && !loaded->isCurrent()) loaded = takeIdle();
    if (!loaded) loaded = load();

    const std::lock_guard held(lock_);
    if (loaded) {
        std::vector<FileStamp> stamps;
        for (const Loaded::Source& source : loaded->sources) stamps.push_back(source.stamp);
        if (stamps != latestStamps_) {
            latestStamps_ = std::move(stamps);
            ++document_;
        }
    }
    return {*this, std::move(loaded), document_};
}

std::unique_ptr<RendererPool::Loaded> RendererPool::takeIdle() {
    const std::lock_guard held(lock_);
    if (idle_.empty()) return nullptr;
    std::unique_ptr<Loaded> taken = std::move(idle_.back());
    idle_.pop_back();
    return taken;
}

// The stamp is taken before the file is read: a change in between makes the renderer old at once.
std::unique_ptr<RendererPool::Loaded> RendererPool::load() const {
    auto loaded = std::make_unique<Loaded>();
    loaded->sources.push_back({fileName_, FileStamp::of(fileName_)});
    QStringList linkedFiles;
    loaded->renderer = loadRenderer(fileName_, &linkedFiles);
    if (!loaded->renderer) return nullptr;
    for (const QString& linked : linkedFiles) loaded->sources.push_back({linked, FileStamp::of(linked)});
    loaded->ownViewBox = loaded->renderer->viewBoxF();
    loaded->keep = loaded->mayBeKept();
    return loaded;
}

void RendererPool::giveBack(std::unique_ptr<Loaded> loaded) noexcept {
    if (!loaded || !loaded->keep) return;
    // A renderer that cannot be put away is loaded again when it is needed.
    static_cast<void>(tzGate([&] {
        const std::lock_guard held(lock_);
        idle_.push_back(std::move(loaded));
    }));
}

// ---- Lease --------------------------------------------------------------------------------------

RendererPool::Lease::Lease(RendererPool& pool, std::unique_ptr<Loaded> loaded, uint64_t document)
    : pool_(&pool), loaded_(std::move(loaded)), document_(document) {}

RendererPool::Lease::~Lease() {
    if (loaded_) pool_->giveBack(std::move(loaded_));
}

QSvgRenderer* RendererPool::Lease::renderer() const {
    return loaded_ ? loaded_->renderer.get() : nullptr;
}

QRectF RendererPool::Lease::ownViewBox() const {
    return loaded_ ? loaded_->ownViewBox : QRectF();
}

}  // namespace tzsvg
