// tzhost preview: a picture of a scene, from a drawing or a scene file.
#include <memory>
#include <string>

#include "host/SceneLoading.h"
#include "host/commands/Commands.h"
#include "host/commands/LogFile.h"
#include "host/commands/NormalizeOption.h"
#include "host/core/OperationError.h"
#include "host/core/Progress.h"
#include "host/io/OutputFile.h"
#include "host/preview/Preview.h"
#include "host/pyramid/TilePixels.h"
#include "host/scenefile/SceneReader.h"

namespace tzhost {
namespace {

constexpr int kLargestSide = 16384;

struct PreviewArguments {
    std::string in;
    std::string out;
    int size = 1024;
    std::string log;
    NormalizeArguments normalize;
};

bool isSceneFile(const std::string& fileName) {
    const std::string extension = std::filesystem::path(fileName).extension().native();
    return extension == ".json" || extension == ".JSON";
}

void runPreview(const CommandContext& context, const PreviewArguments& arguments) {
    const ScenePtr scene = context.host.makeScene();
    LogFile log(context.terminal, arguments.log, arguments.in);
    if (isSceneFile(arguments.in)) {
        readSceneFile(*scene, arguments.in);
    } else {
        const Drawing drawing = openDrawing(context.terminal, arguments.in, arguments.normalize);
        const InterruptScope interruptScope;
        importFile(context.host, *scene, drawing);
    }
    log.commit();
    std::string png;
    inStep(arguments.in, "draw", [&] {
        const QImage picture = drawScene(*scene, arguments.size);
        const Progress progress(context.terminal, "compressing " + arguments.out);
        png = pngBytes(picture);
    });
    OutputFile out(arguments.out, "write");
    out.write(png);
    out.commit();
}

}  // namespace

void addPreviewCommand(CLI::App& app, CommandRun& run) {
    auto arguments = std::make_shared<PreviewArguments>();
    CLI::App* const command = app.add_subcommand("preview", "Draw a scene as a picture");
    command->add_option("IN", arguments->in, "A drawing, or a scene file (.json)")->required();
    command->add_option("OUT.png", arguments->out, "The picture to write")->required();
    command->add_option("--size", arguments->size, "Pixels of the long side")
        ->type_name("N")
        ->capture_default_str()
        ->check(CLI::Range(1, kLargestSide));
    LogFile::addOption(*command, arguments->log);
    addNormalizeOptions(*command, arguments->normalize);
    command->footer("Example:\n  tzhost preview logo.svg logo.png --size 2048");
    command->callback([arguments, &run] {
        run = {arguments->in,
               [arguments](const CommandContext& context) { runPreview(context, *arguments); }};
    });
}

}  // namespace tzhost
