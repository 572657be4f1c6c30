// tzhost image-info, tile, sample and pyramid.
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "host/ImageLoading.h"
#include "host/Refusal.h"
#include "host/commands/Commands.h"
#include "host/commands/Interrupts.h"
#include "host/commands/LogFile.h"
#include "host/commands/NormalizeOption.h"
#include "host/core/OperationError.h"
#include "host/core/Utf8.h"
#include "host/io/Files.h"
#include "host/io/Json.h"
#include "host/pyramid/TilePixels.h"
#include "host/pyramid/WorkerThreads.h"
#include "host/services/Services.h"

namespace tzhost {
namespace {

LoadedImage openImage(CommandContext& context, const InputFile& in, const DrawingArguments& arguments) {
    const Drawing drawing = openDrawing(context.terminal(), in, arguments, Purpose::kImage);
    return explainingRefusal(drawing, Purpose::kImage, [&] { return loadImage(context.host(), drawing); });
}

// The levels by key, 0 being the coarsest, as the tile interface has them. Both interfaces must agree on
// them.
std::vector<TzTileLevel> levelsByKey(const LoadedImage& loaded) {
    uint32_t count = 0;
    uint32_t sampleCount = 0;
    tzCheck(loaded.tiles->tileLevelCount(&count));
    tzCheck(loaded.samples->sampleLevelCount(&sampleCount));
    std::vector<TzTileLevel> levels(count);
    bool same = count == sampleCount;
    for (uint32_t key = 0; same && key < count; ++key) {
        TzSize size{};
        tzCheck(loaded.tiles->tileLevelSize(count - 1 - key, &levels[key]));
        tzCheck(loaded.samples->sampleLevelSize(key, &size));
        same = size.width == levels[key].width && size.height == levels[key].height;
    }
    if (!same) throw std::runtime_error("the two level interfaces do not agree");
    return levels;
}

void printInfo(const RecognisedImage& recognised, TzSize size, TzPixelFormat format,
               const std::vector<TzTileLevel>& levels) {
    const TzImageTarget& target = recognised.target;
    std::printf("recognised: %s, %s, %u x %u, format %u, colours %u, flags %u\n",
                std::string(typeName(recognised.targetType)).c_str(),
                toOneLine(recognised.formatName).c_str(), target.width, target.height, target.format,
                target.colours, recognised.flags);
    std::printf("image: %u x %u, format %u\n", size.width, size.height, format);
    for (size_t key = 0; key < levels.size(); ++key) {
        const TzTileLevel& level = levels[key];
        std::printf("level %2zu: %5u x %5u, tiles %3u x %3u\n", key, level.width, level.height,
                    level.tileWidth, level.tileHeight);
    }
}

void writeSize(PrettyJsonWriter& json, uint32_t width, uint32_t height) {
    json.Key("width");
    json.Uint(width);
    json.Key("height");
    json.Uint(height);
}

void printInfoAsJson(const RecognisedImage& recognised, TzSize size, TzPixelFormat format,
                     const std::vector<TzTileLevel>& levels) {
    JsonBuffer text;
    PrettyJsonWriter json(text);
    const TzImageTarget& target = recognised.target;
    json.StartObject();
    json.Key("recognised");
    json.StartObject();
    json.Key("targetType");
    json.String(typeName(recognised.targetType));
    json.Key("flags");
    json.Uint(recognised.flags);
    json.Key("formatName");
    json.String(toUtf8(recognised.formatName));
    json.Key("format");
    json.Uint(target.format);
    writeSize(json, target.width, target.height);
    json.Key("colours");
    json.Uint(target.colours);
    json.EndObject();
    json.Key("image");
    json.StartObject();
    writeSize(json, size.width, size.height);
    json.Key("format");
    json.Uint(format);
    json.EndObject();
    json.Key("levels");
    json.StartArray();
    for (size_t key = 0; key < levels.size(); ++key) {
        json.StartObject();
        json.Key("key");
        json.Uint64(key);
        writeSize(json, levels[key].width, levels[key].height);
        json.Key("tileWidth");
        json.Uint(levels[key].tileWidth);
        json.Key("tileHeight");
        json.Uint(levels[key].tileHeight);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    std::printf("%s\n", text.GetString());
}

// Asks for the tile on that many threads at once. A module draws it once and gives the same image to all.
CTzUser_Image fetchOnThreads(ITzTileImage& tiles, const TileArguments& arguments) {
    const TzTilePlace place{arguments.column, arguments.row};
    std::vector<CTzUser_Image> images(arguments.threads);
    std::atomic<TzResult> failure{kTzOk};
    WorkerThreads(arguments.threads, [&](uint32_t i) {
        const TzResult result = tzGate([&] { images[i] = fetchTile(tiles, arguments.level, place); });
        if (tzFailed(result)) failure = result;
    }).join();
    tzCheck(failure);
    for (const CTzUser_Image& image : images) {
        if (image && image.pointer().get() != images.front().pointer().get()) {
            throw std::runtime_error("threads got different images of one tile");
        }
    }
    return images.front();
}

}  // namespace

std::vector<std::string> tileFormats() {
    return {"png", "rgba32f"};
}

void runImageInfo(CommandContext& context, const ImageInfoArguments& arguments) {
    const InputFile in = openInput(arguments.in);
    LogFile log(context.terminal(), arguments.log, in);
    const LoadedImage loaded = openImage(context, in, arguments);
    log.commit();
    inStep(in.name(), "describe", [&] {
        const auto print = arguments.json ? printInfoAsJson : printInfo;
        print(loaded.recognised, loaded.image.size(), loaded.image.format(), levelsByKey(loaded));
    });
}

void runTile(CommandContext& context, const TileArguments& arguments) {
    const InputFile in = openInput(arguments.in);
    LogFile log(context.terminal(), arguments.log, in);
    const LoadedImage loaded = openImage(context, in, arguments);
    std::string bytes;
    inStep(in.name(), "tile", [&] {
        const Progress progress(context.terminal(), "drawing " + in.name());
        const CTzUser_Image tile = fetchOnThreads(*loaded.tiles, arguments);
        if (outputFormat(arguments.out, tileFormats()) == "png") {
            bytes = pictureBytes(readPicture(tile, tile.size()), "png");
        } else {
            const std::vector<float> pixels = readPixels(tile);
            bytes.assign(reinterpret_cast<const char*>(pixels.data()), pixels.size() * sizeof(float));
        }
    });
    log.commit();
    OutputFile out = openOutput(arguments.out, "write");
    out.write(bytes);
    out.commit();
}

void runSample(CommandContext& context, const SampleArguments& arguments) {
    const InputFile in = openInput(arguments.in);
    LogFile log(context.terminal(), arguments.log, in);
    const LoadedImage loaded = openImage(context, in, arguments);
    float pixel[4] = {};
    inStep(in.name(), "sample", [&] {
        const Progress progress(context.terminal(), "drawing " + in.name());
        tzCheck(
            loaded.samples->samplePixel(arguments.level, arguments.x, arguments.y, kTzPixelRgbaFloat, pixel));
    });
    log.commit();
    // Nine digits give every float back.
    std::printf("%.9g %.9g %.9g %.9g\n", static_cast<double>(pixel[0]), static_cast<double>(pixel[1]),
                static_cast<double>(pixel[2]), static_cast<double>(pixel[3]));
}

void runPyramid(CommandContext& context, const PyramidArguments& arguments) {
    const InputFile in = openInput(arguments.in);
    LogFile log(context.terminal(), arguments.log, in);
    const Drawing drawing = openDrawing(context.terminal(), in, arguments, Purpose::kImage);
    const InterruptScope interruptScope;
    const PyramidSummary summary = explainingRefusal(drawing, Purpose::kImage, [&] {
        return writePyramid(context.host(), drawing, arguments.out, arguments.options);
    });
    log.commit();
    if (context.terminal().isQuiet()) return;
    std::printf("%s: %llu tiles written, %llu kept, %.3f s -> %s\n", toOneLine(in.name()).c_str(),
                static_cast<unsigned long long>(summary.written),
                static_cast<unsigned long long>(summary.kept), summary.seconds,
                toOneLine((std::filesystem::path(arguments.out) / "index.html").native()).c_str());
}

}  // namespace tzhost
