// The image object "svgImage": an SVG document as a pyramid of seventeen levels, of which any tile is drawn
// when it is asked for. It answers for the whole image, for tiles by level and for pixels by level.
#pragma once

#include <QString>
#include <memory>

#include "hostsdk/CTzImpl_Image.h"
#include "hostsdk/CTzImpl_ImageLevelSample.h"
#include "hostsdk/CTzImpl_TileImage.h"
#include "image/TileCache.h"

namespace tzsvg {

class CSVGImageLoader;
class OwnImages;

class CSVGImage : public CTzImpl_Image, public CTzImpl_TileImage, public CTzImpl_ImageLevelSample {
  public:
    explicit CSVGImage(const CTzPtr<ITzHost>& host, TileCache::Settings settings = {});

    // The factory of the server.
    static CTzPtr<ITzServerFactory> factory(const CTzPtr<ITzHost>& host);

    // The object behind an interface that came out of the host's registry; null when another module, or
    // another copy of this one, has made it.
    static CSVGImage* ofThisModule(ITzImage* image);

    // Reads the document's size and sets up the levels. Called once, by the loader; keeps the loader. Throws
    // kTzFailed when the file is no document with an area. Before it, everything else is refused.
    void initialise(CSVGImageLoader& loader, const QString& fileName);

  protected:
    ~CSVGImage() override;

    TzSize imageSize() const override;
    TzPixelFormat imageFormat() const override;
    void readImageLine(uint32_t x, uint32_t y, uint32_t count, TzPixelType type, void* out) override;

    TzTileLevel levelOfTiles(uint32_t level) const override;
    CTzPtr<ITzImage> tileAt(uint32_t level, TzTilePlace place) override;
    TzSize tileSizeAt(uint32_t level, TzTilePlace place) const override;
    TzTilePlace tilePlaceOf(uint32_t level, uint32_t x, uint32_t y) const override;

    TzSize levelOfSamples(uint32_t level) const override;
    void readSamples(uint32_t level, uint32_t x, uint32_t y, uint32_t count, TzPixelType type,
                     void* out) override;

  private:
    struct Document;

    Document& document() const;
    CTzPtr<ITzImage> tileOf(const TileKey& key);
    TileCache::Rendered render(const TileKey& key);

    CTzUser_ImageService images_;
    CTzUser_ThreadMutex mutex_;  // guards the pool of renderers
    TileCache tiles_;
    const std::shared_ptr<OwnImages> ownImages_;
    std::unique_ptr<Document> document_;  // set by initialise()
};

}  // namespace tzsvg
