// tzhost image-info: what the host knows of a drawing as an image.
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "host/ImageLoading.h"
#include "host/commands/Commands.h"
#include "host/commands/LogFile.h"
#include "host/commands/NormalizeOption.h"
#include "host/core/OperationError.h"
#include "host/core/Utf8.h"
#include "host/services/Services.h"

namespace tzhost {
namespace {

struct ImageInfoArguments {
    std::string in;
    std::string log;
    NormalizeArguments normalize;
    bool json = false;
};

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

void printPlain(const RecognisedImage& recognised, TzSize size, TzPixelFormat format,
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

void printJson(const RecognisedImage& recognised, TzSize size, TzPixelFormat format,
               const std::vector<TzTileLevel>& levels) {
    using Json = nlohmann::ordered_json;
    const TzImageTarget& target = recognised.target;
    Json rows = Json::array();
    for (size_t key = 0; key < levels.size(); ++key) {
        const TzTileLevel& level = levels[key];
        rows.push_back({{"key", key},
                        {"width", level.width},
                        {"height", level.height},
                        {"tileWidth", level.tileWidth},
                        {"tileHeight", level.tileHeight}});
    }
    Json document;
    document["recognised"] = {{"targetType", typeName(recognised.targetType)},
                              {"flags", recognised.flags},
                              {"formatName", toUtf8(recognised.formatName)},
                              {"format", target.format},
                              {"width", target.width},
                              {"height", target.height},
                              {"colours", target.colours}};
    document["image"] = {{"width", size.width}, {"height", size.height}, {"format", format}};
    document["levels"] = rows;
    std::printf("%s\n", document.dump(2).c_str());
}

void runImageInfo(const CommandContext& context, const ImageInfoArguments& arguments) {
    LogFile log(context.terminal, arguments.log, arguments.in);
    const LoadedImage loaded =
        loadImage(context.host, openDrawing(context.terminal, arguments.in, arguments.normalize));
    log.commit();
    inStep(arguments.in, "describe", [&] {
        const auto print = arguments.json ? printJson : printPlain;
        print(loaded.recognised, loaded.image.size(), loaded.image.format(), levelsByKey(loaded));
    });
}

}  // namespace

void addImageInfoCommand(CLI::App& app, CommandRun& run) {
    auto arguments = std::make_shared<ImageInfoArguments>();
    CLI::App* const command = app.add_subcommand("image-info", "Tell what a drawing is as an image");
    command->add_option("IN.svg", arguments->in, "The drawing")->required();
    command->add_flag("--json", arguments->json, "As JSON");
    LogFile::addOption(*command, arguments->log);
    addNormalizeOptions(*command, arguments->normalize);
    command->footer("Example:\n  tzhost image-info logo.svg --json");
    command->callback([arguments, &run] {
        run = {arguments->in,
               [arguments](const CommandContext& context) { runImageInfo(context, *arguments); }};
    });
}

}  // namespace tzhost
