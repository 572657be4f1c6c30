// tzhost sample: one pixel of one level, through the level-sample interface.
#include <cstdio>
#include <memory>
#include <string>

#include "host/ImageLoading.h"
#include "host/commands/Commands.h"
#include "host/commands/LogFile.h"
#include "host/commands/NormalizeOption.h"
#include "host/core/OperationError.h"
#include "host/core/Progress.h"

namespace tzhost {
namespace {

struct SampleArguments {
    std::string in;
    std::string log;
    NormalizeArguments normalize;
    uint32_t level = 0;
    uint32_t x = 0;
    uint32_t y = 0;
};

void runSample(const CommandContext& context, const SampleArguments& arguments) {
    LogFile log(context.terminal, arguments.log, arguments.in);
    const LoadedImage loaded =
        loadImage(context.host, openDrawing(context.terminal, arguments.in, arguments.normalize));
    float pixel[4] = {};
    inStep(arguments.in, "sample", [&] {
        const Progress progress(context.terminal, "drawing " + arguments.in);
        tzCheck(
            loaded.samples->samplePixel(arguments.level, arguments.x, arguments.y, kTzPixelRgbaFloat, pixel));
    });
    log.commit();
    // Nine digits give every float back.
    std::printf("%.9g %.9g %.9g %.9g\n", static_cast<double>(pixel[0]), static_cast<double>(pixel[1]),
                static_cast<double>(pixel[2]), static_cast<double>(pixel[3]));
}

}  // namespace

void addSampleCommand(CLI::App& app, CommandRun& run) {
    auto arguments = std::make_shared<SampleArguments>();
    CLI::App* const command = app.add_subcommand("sample", "Print one pixel of a drawing: r g b a");
    command->add_option("IN.svg", arguments->in, "The drawing")->required();
    command->add_option("LEVEL", arguments->level, "The level, 0 being the coarsest")->required();
    command->add_option("X", arguments->x, "Pixels from the left")->required();
    command->add_option("Y", arguments->y, "Pixels from the top")->required();
    LogFile::addOption(*command, arguments->log);
    addNormalizeOptions(*command, arguments->normalize);
    command->footer("Example:\n  tzhost sample logo.svg 10 512 300");
    command->callback([arguments, &run] {
        run = {arguments->in, [arguments](const CommandContext& context) { runSample(context, *arguments); }};
    });
}

}  // namespace tzhost
