// Made by CSVGImageLoader; draws through TileRenderer.
#include "image/CSVGImage.h"

#include <algorithm>
#include <mutex>
#include <set>
#include <vector>

#include "hostsdk/CTzPolymorph.h"
#include "image/CSVGImageLoader.h"
#include "image/PixelConversion.h"
#include "image/RendererPool.h"
#include "image/TileRenderer.h"
#include "svg/GuiApplication.h"

namespace tzsvg {

// The images that this copy of the module has made. The registry may hold another's factory under the name,
// and an interface does not tell whose object it is.
class OwnImages {
  public:
    void add(const ITzImage* image) {
        const std::lock_guard held(lock_);
        images_.insert(image);
    }
    void remove(const ITzImage* image) {
        const std::lock_guard held(lock_);
        images_.erase(image);
    }
    bool contains(const ITzImage* image) {
        const std::lock_guard held(lock_);
        return images_.count(image) != 0;
    }

  private:
    std::mutex lock_;
    std::set<const ITzImage*> images_;
};

namespace {

// Every image has a share in it: a program's caches may let go of images when the module's static objects are
// gone.
const std::shared_ptr<OwnImages>& ownImages() {
    static const auto kImages = std::make_shared<OwnImages>();
    return kImages;
}

constexpr uint32_t kBytesPerPixel = 4 * sizeof(float);

// Makes the host's image of a drawn tile. Rows go over in bands that stay in the processor's cache.
CTzUser_Image hostImage(const CTzUser_ImageService& images, const QImage& pixels, TzPixelFormat format) {
    constexpr int kBandRows = 16;
    const int width = pixels.width();
    CTzUser_Image image =
        images.createImage({static_cast<uint32_t>(width), static_cast<uint32_t>(pixels.height())}, format);
    const CTzUser_ImageWriter writer(image.pointer().query<ITzImageWriter>());
    if (!writer) throw CTzError(kTzNoInterface);
    const auto rowValues = static_cast<size_t>(width) * 4;
    std::vector<float> band(rowValues * kBandRows);
    for (int y = 0; y < pixels.height(); y += kBandRows) {
        const int rows = std::min(kBandRows, pixels.height() - y);
        float* values = band.data();
        for (int row = 0; row < rows; ++row, values += rowValues) {
            const uchar* const line = pixels.constScanLine(y + row);
            // Many rows are as the one above.
            if (row > 0 && std::equal(line, line + rowValues, line - pixels.bytesPerLine())) {
                std::copy_n(values - rowValues, rowValues, values);
            } else {
                toRgbaFloats(reinterpret_cast<const QRgb*>(line), width, values);
            }
        }
        const TzSize rectangle{static_cast<uint32_t>(width), static_cast<uint32_t>(rows)};
        writer.writeRows(0, static_cast<uint32_t>(y), rectangle, kTzPixelRgbaFloat, band.data(),
                         uint64_t{rectangle.width} * rectangle.height * kBytesPerPixel);
    }
    return image;
}

}  // namespace

// What initialise() sets up, fixed from then on.
struct CSVGImage::Document {
    CTzPtr<ITzImageLoader> loader;  // whose description the format is from
    TzPixelFormat format;
    LevelTable levels;
    std::unique_ptr<RendererPool> renderers;
};

CSVGImage::CSVGImage(const CTzPtr<ITzHost>& host, TileCache::Settings settings)
    : CTzImpl_TileImage(kLevelCount),
      CTzImpl_ImageLevelSample(kLevelCount),
      images_(CTzUser_Host(host).service<ITzImageService>()),
      mutex_(CTzUser_ThreadService(CTzUser_Host(host).service<ITzThreadService>()).createMutex()),
      tiles_(CTzUser_ThreadService(CTzUser_Host(host).service<ITzThreadService>()), settings),
      ownImages_(ownImages()) {
    ownImages_->add(this);
}

CSVGImage::~CSVGImage() {
    ownImages_->remove(this);
}

CTzPtr<ITzServerFactory> CSVGImage::factory(const CTzPtr<ITzHost>& host) {
    return CTzPolymorph<CSVGImage, ITzImage, ITzTileImage, ITzImageLevelSample>::factory(host, nullptr);
}

CSVGImage* CSVGImage::ofThisModule(ITzImage* image) {
    return ownImages()->contains(image) ? static_cast<CSVGImage*>(image) : nullptr;
}

void CSVGImage::initialise(CSVGImageLoader& loader, const QString& fileName) {
    if (document_) throw CTzError(kTzExists);
    if (!ensureGuiApplication()) throw CTzError(kTzNotSupported);
    auto renderers = std::make_unique<RendererPool>(fileName, mutex_);
    QSize size;
    if (const RendererPool::Lease lease = renderers->lend(); lease.renderer())
        size = lease.renderer()->defaultSize();
    if (size.isEmpty()) throw CTzError(kTzFailed);
    const LevelTable levels({static_cast<uint32_t>(size.width()), static_cast<uint32_t>(size.height())});
    document_ = std::make_unique<Document>(Document{CTzPtr<ITzImageLoader>::share(&loader),
                                                    loader.target().format, levels, std::move(renderers)});
}

CSVGImage::Document& CSVGImage::document() const {
    if (!document_) throw CTzError(kTzNotReady);
    return *document_;
}

// ---- The whole image ----------------------------------------------------------------------------

TzSize CSVGImage::imageSize() const {
    return document().levels.imageSize();
}

TzPixelFormat CSVGImage::imageFormat() const {
    return document().format;
}

// The image is its finest level, the last one of the samples.
void CSVGImage::readImageLine(uint32_t x, uint32_t y, uint32_t count, TzPixelType type, void* out) {
    readSamples(sampleLevels() - 1, x, y, count, type, out);
}

// ---- Tiles: level 0 is the finest ---------------------------------------------------------------

TzTileLevel CSVGImage::levelOfTiles(uint32_t level) const {
    return document().levels.level(keyOfTileLevel(level));
}

CTzPtr<ITzImage> CSVGImage::tileAt(uint32_t level, TzTilePlace place) {
    return tileOf({keyOfTileLevel(level), place.column, place.row});
}

TzSize CSVGImage::tileSizeAt(uint32_t level, TzTilePlace place) const {
    return document().levels.tileSize({keyOfTileLevel(level), place.column, place.row});
}

TzTilePlace CSVGImage::tilePlaceOf(uint32_t level, uint32_t x, uint32_t y) const {
    return document().levels.tileOfPixel(keyOfTileLevel(level), x, y);
}

CTzPtr<ITzImage> CSVGImage::tileOf(const TileKey& key) {
    document().levels.requireTile(key);
    return tiles_.tile(key, [&] { return render(key); });
}

TileCache::Rendered CSVGImage::render(const TileKey& key) {
    if (!ensureGuiApplication()) throw CTzError(kTzNotSupported);
    Document& of = document();
    const DrawnTile drawn = drawTile(of.levels, key, *of.renderers);
    return {hostImage(images_, drawn.pixels, of.format).pointer(),
            static_cast<uint64_t>(drawn.pixels.sizeInBytes()), drawn.document};
}

// ---- Samples: level 0 is the coarsest -----------------------------------------------------------

TzSize CSVGImage::levelOfSamples(uint32_t level) const {
    const TzTileLevel& of = document().levels.level(keyOfSampleLevel(level));
    return {of.width, of.height};
}

void CSVGImage::readSamples(uint32_t level, uint32_t x, uint32_t y, uint32_t count, TzPixelType type,
                            void* out) {
    if (type != kTzPixelRgbaFloat) throw CTzError(kTzNotSupported);
    const uint32_t key = keyOfSampleLevel(level);
    const LevelTable& levels = document().levels;
    const TzTileLevel& of = levels.level(key);
    if (y >= of.height || x > of.width || count > of.width - x) throw CTzError(kTzOutOfBounds);
    char* target = static_cast<char*>(out);
    while (count > 0) {
        const TzTilePlace place = levels.tileOfPixel(key, x, y);
        const uint32_t inTile = x % of.tileWidth;
        const uint32_t piece = std::min(count, of.tileWidth - inTile);
        const CTzUser_Image tile(tileOf({key, place.column, place.row}));
        tile.readLine(inTile, y % of.tileHeight, piece, type, target);
        target += size_t{piece} * kBytesPerPixel;
        x += piece;
        count -= piece;
    }
}

}  // namespace tzsvg
