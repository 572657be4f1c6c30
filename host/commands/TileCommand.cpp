// tzhost tile: one tile of one level, through the tile interface, into a file.
#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include "host/ImageLoading.h"
#include "host/commands/Commands.h"
#include "host/commands/LogFile.h"
#include "host/commands/NormalizeOption.h"
#include "host/core/OperationError.h"
#include "host/core/Progress.h"
#include "host/io/OutputFile.h"
#include "host/pyramid/TilePixels.h"
#include "host/pyramid/WorkerThreads.h"

namespace tzhost {
namespace {

struct TileArguments {
    std::string in;
    std::string log;
    NormalizeArguments normalize;
    uint32_t level = 0;
    uint32_t column = 0;
    uint32_t row = 0;
    std::string out;
    uint32_t threads = 1;
};

bool endsWith(const std::string& text, std::string_view end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
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

void runTile(const CommandContext& context, const TileArguments& arguments) {
    LogFile log(context.terminal, arguments.log, arguments.in);
    const LoadedImage loaded =
        loadImage(context.host, openDrawing(context.terminal, arguments.in, arguments.normalize));
    std::string bytes;
    inStep(arguments.in, "tile", [&] {
        const Progress progress(context.terminal, "drawing " + arguments.in);
        const CTzUser_Image tile = fetchOnThreads(*loaded.tiles, arguments);
        if (endsWith(arguments.out, ".png")) {
            bytes = pngBytes(readPicture(tile, tile.size()));
        } else {
            const std::vector<float> pixels = readPixels(tile);
            bytes.assign(reinterpret_cast<const char*>(pixels.data()), pixels.size() * sizeof(float));
        }
    });
    log.commit();
    OutputFile out(arguments.out, "write");
    out.write(bytes);
    out.commit();
}

}  // namespace

void addTileCommand(CLI::App& app, CommandRun& run) {
    auto arguments = std::make_shared<TileArguments>();
    CLI::App* const command = app.add_subcommand("tile", "Write one tile of a drawing");
    command->add_option("IN.svg", arguments->in, "The drawing")->required();
    command->add_option("LEVEL", arguments->level, "The level, 0 being the finest")->required();
    command->add_option("COLUMN", arguments->column, "The tile's column")->required();
    command->add_option("ROW", arguments->row, "The tile's row")->required();
    command->add_option("OUT", arguments->out, "A picture (.png) or raw little-endian float RGBA (.rgba32f)")
        ->required()
        ->check([](const std::string& out) {
            return endsWith(out, ".png") || endsWith(out, ".rgba32f") ? "" : "must end in .png or .rgba32f";
        });
    command->add_option("--threads", arguments->threads, "Ask for the tile on N threads at once")
        ->type_name("N")
        ->capture_default_str()
        ->check(CLI::Range(1, 256));
    LogFile::addOption(*command, arguments->log);
    addNormalizeOptions(*command, arguments->normalize);
    command->footer("Example:\n  tzhost tile logo.svg 4 3 5 tile.png");
    command->callback([arguments, &run] {
        run = {arguments->in, [arguments](const CommandContext& context) { runTile(context, *arguments); }};
    });
}

}  // namespace tzhost
