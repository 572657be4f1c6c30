// tzhost export: a scene file into a drawing.
#include <memory>
#include <string>

#include "host/SceneReader.h"
#include "host/SceneSaving.h"
#include "host/commands/Commands.h"
#include "host/commands/LogFile.h"

namespace tzhost {
namespace {

struct ExportArguments {
    std::string scene;
    std::string out;
    std::string log;
    ExportOptions options;
};

void runExport(Session& session, const ExportArguments& arguments) {
    const ScenePtr scene = session.host.makeScene();
    readSceneFile(*scene, arguments.scene);
    LogFile log(session.host, arguments.log, arguments.scene);
    OutputFile out(arguments.out, "save");
    exportScene(session.host, *scene, out, arguments.options);
    log.commit();
    out.commit();
}

}  // namespace

void addExportCommand(CLI::App& app, CommandRun& run) {
    auto arguments = std::make_shared<ExportArguments>();
    CLI::App* const command = app.add_subcommand("export", "Write a scene file as a drawing");
    command->add_option("SCENE.json", arguments->scene, "The scene file")->required();
    command->add_option("OUT.svg", arguments->out, "The drawing to write")->required();
    command->add_flag("--prepare", arguments->options.preparatoryPass,
                      "Ask the saver for its preparatory pass first");
    LogFile::addOption(*command, arguments->log);
    command->footer("Example:\n  tzhost export logo.json back.svg");
    command->callback([arguments, &run] {
        run = {arguments->scene, [arguments](Session& session) { runExport(session, *arguments); }};
    });
}

}  // namespace tzhost
