// An image loader: files of the word "checker" and a size are checkerboards of so many pixels to a side.
// Images are read by tile and by level; this one draws what it is asked for, and keeps nothing.
#pragma once

#include <fstream>
#include <string>
#include <vector>

#include "hostsdk/CTzImpl_Image.h"
#include "hostsdk/CTzImpl_ImageLevelSample.h"
#include "hostsdk/CTzImpl_Loader1.h"
#include "hostsdk/CTzImpl_TileImage.h"
#include "hostsdk/CTzLogMessage.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/CTzUser_Image.h"

// One level, one tile. Called on any thread, on several at once.
class CheckerImage : public CTzImpl_Image, public CTzImpl_TileImage, public CTzImpl_ImageLevelSample {
  public:
    CheckerImage(const CTzPtr<ITzHost>& host, uint32_t side)
        : CTzImpl_TileImage(1), CTzImpl_ImageLevelSample(1), host_(host), side_(side) {}

  protected:
    TzSize imageSize() const override { return {side_, side_}; }
    TzPixelFormat imageFormat() const override { return kTzFormatRgbaFloat; }
    void readImageLine(uint32_t x, uint32_t y, uint32_t count, TzPixelType type, void* out) override {
        if (type != kTzPixelRgbaFloat) throw CTzError(kTzNotSupported);
        if (y >= side_ || x > side_ || count > side_ - x) throw CTzError(kTzOutOfBounds);
        auto* value = static_cast<float*>(out);
        for (uint32_t i = x; i < x + count; ++i) {
            const float shade = (i / 8 + y / 8) % 2 == 0 ? 1.0F : 0.0F;
            for (const float channel : {shade, shade, shade, 1.0F}) *value++ = channel;
        }
    }

    TzTileLevel levelOfTiles(uint32_t) const override { return {side_, side_, side_, side_}; }
    TzSize tileSizeAt(uint32_t, TzTilePlace place) const override {
        return inside(place.column, place.row, 1);
    }
    TzTilePlace tilePlaceOf(uint32_t, uint32_t x, uint32_t y) const override {
        inside(x, y, side_);
        return {0, 0};
    }
    // A tile is an image of the host's: it lives where the host wants it, and as long.
    CTzPtr<ITzImage> tileAt(uint32_t, TzTilePlace place) override {
        inside(place.column, place.row, 1);
        const CTzUser_ImageService images(CTzUser_Host(host_).service<ITzImageService>());
        const CTzUser_Image tile = images.createImage({side_, side_}, kTzFormatRgbaFloat);
        std::vector<float> row(size_t{side_} * 4);
        for (uint32_t y = 0; y < side_; ++y) {
            readImageLine(0, y, side_, kTzPixelRgbaFloat, row.data());
            CTzUser_ImageWriter(tile.pointer().query<ITzImageWriter>())
                .writeRows(0, y, {side_, 1}, kTzPixelRgbaFloat, row.data(), row.size() * sizeof(float));
        }
        return tile.pointer();
    }

    TzSize levelOfSamples(uint32_t) const override { return imageSize(); }
    void readSamples(uint32_t, uint32_t x, uint32_t y, uint32_t count, TzPixelType type, void* out) override {
        readImageLine(x, y, count, type, out);
    }

  private:
    TzSize inside(uint32_t x, uint32_t y, uint32_t end) const {
        if (x >= end || y >= end) throw CTzError(kTzOutOfBounds);
        return imageSize();
    }

    CTzPtr<ITzHost> host_;
    uint32_t side_;
};

class CheckerLoader : public CTzImpl_Loader1 {
  public:
    explicit CheckerLoader(const CTzPtr<ITzHost>& host) : host_(host), log_(CTzUser_Host(host)) {}

  protected:
    TzResult recogniseFile(TzLoadAccess& access) override {
        std::string word;
        std::ifstream file{std::string(tzView(access.fileName))};
        if (!(file >> word) || word != "checker") return kTzNotRecognised;
        uint32_t side = 0;
        if (!(file >> side) || side == 0 || side > 4096) {
            // Messages are for the host thread; the log takes lines from any.
            log_.addErrorLine("a checkerboard has 1 to 4096 pixels to a side");
            return kTzFailed;
        }
        target_ = {kTzFormatRgbaFloat, side, side, 0};
        access.targetType =
            CTzUser_TypeService(CTzUser_Host(host_).service<ITzTypeService>()).typeCode("image");
        access.flags = kTzLoadOneStep;
        access.target = &target_;
        access.formatName = tzText("Checker");
        return kTzOk;
    }

    CTzPtr<ITzImage> loadFile(const TzLoadAccess& access) override {
        return CTzPolymorph<CheckerImage, ITzImage, ITzTileImage, ITzImageLevelSample>::create(
            host_, access.target->width);
    }

  private:
    class Log : public CTzLogMessage {
      public:
        explicit Log(CTzUser_Host host) : CTzLogMessage(std::move(host), "io-status") {}
        const char* formatName() const override { return "Checker"; }
        const char* version() const override { return "1.0"; }
    };

    CTzPtr<ITzHost> host_;
    Log log_;
    TzImageTarget target_{};
};
