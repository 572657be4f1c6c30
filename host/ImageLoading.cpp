#include "host/ImageLoading.h"

#include "host/core/Observer.h"
#include "host/core/OperationError.h"
#include "host/io/Files.h"
#include "hostsdk/CTzText.h"

namespace tzhost {
namespace {

// The first loader, in registration order, that recognises the file. When none does, throws the code of the
// last one.
CTzPtr<ITzImageLoader> recognise(const Host& host, TzLoadAccess& access) {
    TzResult refusal = kTzNotRecognised;
    auto found = host.servers().find<ITzImageLoader>([&](ITzImageLoader& loader) {
        const TzResult recognised = loader.recognise(&access);
        if (tzFailed(recognised)) refusal = recognised;
        return !tzFailed(recognised);
    });
    if (!found) throw CTzError(refusal);
    return found;
}

}  // namespace

LoadedImage loadImage(const Host& host, const Drawing& drawing) {
    requireReadable(drawing.file());
    const std::string& fileName = drawing.name();
    requireUtf8Name(fileName, "open");
    const Progress progress(host.observer(), "opening " + fileName);
    TzLoadAccess access{};
    access.fileName = tzText(drawing.readName());
    const auto loader = inStep(fileName, "recognise", [&] {
        auto recognised = recognise(host, access);
        if (!access.target) throw CTzError(kTzFailed);
        return recognised;
    });
    LoadedImage loaded{drawing, {}, {}, {}, {}};
    loaded.recognised = {access.targetType, access.flags, std::string(tzView(access.formatName)),
                         *access.target};
    inStep(fileName, "load", [&] {
        ITzImage* image = nullptr;
        tzCheck(loader->load(&access, &image));
        const auto owned = CTzPtr<ITzImage>::adopt(image);
        loaded.tiles = owned.query<ITzTileImage>();
        loaded.samples = owned.query<ITzImageLevelSample>();
        loaded.image = CTzUser_Image(owned);
        if (!loaded.tiles || !loaded.samples) throw CTzError(kTzNoInterface);
    });
    return loaded;
}

CTzUser_Image fetchTile(ITzTileImage& tiles, uint32_t level, TzTilePlace place) {
    ITzImage* image = nullptr;
    tzCheck(tiles.tile(level, place, &image));
    return CTzUser_Image(CTzPtr<ITzImage>::adopt(image));
}

std::vector<float> readPixels(const CTzUser_Image& image) {
    const TzSize size = image.size();
    std::vector<float> pixels(size_t{size.width} * size.height * 4);
    for (uint32_t y = 0; y < size.height; ++y) {
        image.readLine(0, y, size.width, kTzPixelRgbaFloat, pixels.data() + size_t{y} * size.width * 4);
    }
    return pixels;
}

}  // namespace tzhost
