// tzhost preview: a picture of a scene, from a drawing or a scene file.
#include <memory>
#include <string>

#include "host/OperationError.h"
#include "host/OutputFile.h"
#include "host/Preview.h"
#include "host/Progress.h"
#include "host/SceneLoading.h"
#include "host/SceneReader.h"
#include "host/TilePixels.h"
#include "host/commands/Commands.h"
#include "host/commands/LogFile.h"

namespace tzhost {
namespace {

constexpr int kLargestSide = 16384;

struct PreviewArguments {
    std::string in;
    std::string out;
    int size = 1024;
    std::string log;
};

bool isSceneFile(const std::string& fileName) {
    const std::string extension = std::filesystem::path(fileName).extension().native();
    return extension == ".json" || extension == ".JSON";
}

void runPreview(Session& session, const PreviewArguments& arguments) {
    const ScenePtr scene = session.host.makeScene();
    LogFile log(session.host, arguments.log, arguments.in);
    if (isSceneFile(arguments.in)) {
        readSceneFile(*scene, arguments.in);
    } else {
        importFile(session.host, *scene, arguments.in);
    }
    log.commit();
    std::string png;
    inStep(arguments.in, "draw", [&] {
        const QImage picture = drawScene(*scene, arguments.size);
        const Progress progress("compressing " + arguments.out);
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
    command->footer("Example:\n  tzhost preview logo.svg logo.png --size 2048");
    command->callback([arguments, &run] {
        run = {arguments->in, [arguments](Session& session) { runPreview(session, *arguments); }};
    });
}

}  // namespace tzhost
