// CSVGImage owns a pool; TileRenderer borrows from it.
#include "image/RendererPool.h"

#include <algorithm>
#include <mutex>

#include "image/DrawingCost.h"
#include "image/culling/CellRenderers.h"
#include "svg/guard/DocumentGuard.h"

namespace tzsvg {

LoadedDrawing loadDrawing(const QString& fileName) {
    const std::optional<SafeDocument> document = inspectDocument(fileName);
    if (!document) return {};
    const auto load = [&]() -> std::unique_ptr<QSvgRenderer> {
        auto renderer = std::make_unique<QSvgRenderer>();
        const bool loaded =
            document->bytes.isEmpty() ? renderer->load(fileName) : renderer->load(document->bytes);
        return loaded ? std::move(renderer) : nullptr;
    };
    std::unique_ptr<QSvgRenderer> renderer = load();
    if (!renderer) return {};
    const PaintSurvey survey = surveyPaint(*renderer);
    if (!survey.isWithinLimits) return {};
    // Drawing it has started an animation.
    if (renderer->animated()) renderer = load();
    return {std::move(renderer), document->linkedFiles, survey};
}

// One state of the files that a document is made of.
struct RendererPool::Version {
    struct Source {
        QString fileName;
        FileStamp stamp;
    };

    bool isCurrent() const {
        return std::all_of(sources.begin(), sources.end(), [](const Source& source) {
            return FileStamp::of(source.fileName) == source.stamp;
        });
    }

    // Whether another document was loaded from files that look the same.
    bool isSameAs(const Version& other) const {
        return std::equal(sources.begin(), sources.end(), other.sources.begin(), other.sources.end(),
                          [](const Source& a, const Source& b) { return a.stamp == b.stamp; });
    }

    // A change so soon after the last one that the file's time stays the same would not be noticed.
    bool isSettled() const {
        return std::all_of(sources.begin(), sources.end(),
                           [](const Source& source) { return source.stamp.isSettled(); });
    }

    // The document's text, if it is still this version.
    std::optional<QByteArray> text() const {
        std::optional<QByteArray> xml = documentText(sources.front().fileName);
        return isCurrent() ? std::move(xml) : std::nullopt;
    }

    std::vector<Source> sources;
    QRectF ownViewBox;
    QRectF area;  // what of the drawing can be seen, in its view box's units
    uint64_t number = 0;
    bool keep = false;                     // whether its renderers may be kept
    std::unique_ptr<CellRenderers> cells;  // when they may
};

// A renderer, and what it was loaded from.
struct RendererPool::Loaded {
    CellRenderers::Taken taken;
    std::shared_ptr<Version> version;
    bool isOfCell;
};

RendererPool::RendererPool(QString fileName, CTzUser_ThreadMutex lock, CullingSettings culling)
    : fileName_(std::move(fileName)), lock_(std::move(lock)), culling_(culling) {}

RendererPool::~RendererPool() = default;

RendererPool::Lease RendererPool::lend() {
    std::unique_ptr<Loaded> loaded = takeIdle();
    while (loaded && !loaded->version->isCurrent()) loaded = takeIdle();
    if (!loaded) {
        loaded = load();
        if (loaded) number(*loaded);
    }
    const uint64_t document = loaded ? loaded->version->number : latestNumber();
    return {*this, std::move(loaded), document};
}

RendererPool::Lease RendererPool::lend(const ViewOf& viewOf) {
    std::shared_ptr<Version> version = latest();
    if (!version || !version->cells || !version->isCurrent()) return lend();
    const std::optional<TileView> view = viewOf(version->ownViewBox);
    if (!view) return {*this, nullptr, version->number};
    if (version->cells->wantsPreparing(*view)) {
        const Lease whole = lend();
        if (whole.loaded_ && whole.loaded_->version == version) version->cells->prepare(*whole.renderer());
    }
    std::optional<CellRenderers::Taken> taken = version->cells->take(*view);
    if (!taken) return lend();
    const uint64_t document = version->number;
    return {*this, std::make_unique<Loaded>(Loaded{*std::move(taken), std::move(version), true}), document};
}

std::shared_ptr<RendererPool::Version> RendererPool::latest() {
    const std::lock_guard held(lock_);
    return latest_;
}

uint64_t RendererPool::latestNumber() {
    const std::lock_guard held(lock_);
    return document_;
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
    auto version = std::make_shared<Version>();
    version->sources.push_back({fileName_, FileStamp::of(fileName_)});
    auto [renderer, linkedFiles, survey] = loadDrawing(fileName_);
    if (!renderer) return nullptr;
    for (const QString& linked : linkedFiles) version->sources.push_back({linked, FileStamp::of(linked)});
    version->ownViewBox = renderer->viewBoxF();
    // An animated document moves on from the moment it is first drawn.
    version->keep = !renderer->animated() && version->isSettled();
    version->area = QRectF(version->ownViewBox.topLeft(), QSizeF(renderer->defaultSize()));
    if (version->keep && survey.isTold) {
        version->cells = std::make_unique<CellRenderers>([of = version.get()] { return of->text(); },
                                                         version->area, culling_);
    }
    return std::make_unique<Loaded>(Loaded{{std::move(renderer), {}, 0}, std::move(version), false});
}

// Gives a document that was just loaded its number: the latest one's, when the files look the same.
void RendererPool::number(Loaded& loaded) {
    const std::lock_guard held(lock_);
    const bool isSame = latest_ && loaded.version->isSameAs(*latest_);
    if (isSame && latest_->keep && loaded.version->keep) {
        loaded.version = latest_;
        return;
    }
    if (!isSame) ++document_;
    loaded.version->number = document_;
    latest_ = loaded.version;
}

void RendererPool::giveBack(std::unique_ptr<Loaded> loaded) noexcept {
    if (!loaded || !loaded->version->keep) return;
    if (loaded->isOfCell) {
        loaded->version->cells->giveBack(std::move(loaded->taken));
        return;
    }
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
    return loaded_ ? loaded_->taken.renderer.get() : nullptr;
}

bool RendererPool::Lease::isOfCell() const {
    return loaded_ && loaded_->isOfCell;
}

QRectF RendererPool::Lease::ownViewBox() const {
    return loaded_ ? loaded_->version->ownViewBox : QRectF();
}

}  // namespace tzsvg
