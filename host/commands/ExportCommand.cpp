// tzhost export: a scene file into a drawing.
#include <memory>
#include <string>

#include "host/SceneSaving.h"
#include "host/commands/Commands.h"
#include "host/commands/LogFile.h"
#include "host/scenefile/SceneReader.h"

namespace tzhost {
namespace {

struct ExportArguments {
    std::string scene;
    std::string out;
    std::string log;
    ExportOptions options;
};

void runExport(const CommandContext& context, const ExportArguments& arguments) {
    const ScenePtr scene = context.host.makeScene();
    readSceneFile(*scene, arguments.scene);
    LogFile log(context.terminal, arguments.log, arguments.scene);
    OutputFile out(arguments.out, "save");
    const InterruptScope interruptScope;
    exportScene(context.host, *scene, out, arguments.options);
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
        run = {arguments->scene,
               [arguments](const CommandContext& context) { runExport(context, *arguments); }};
    });
}

}  // namespace tzhost
