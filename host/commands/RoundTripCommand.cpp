// tzhost roundtrip: a drawing into a scene and back into a drawing, in one process.
#include <memory>
#include <string>

#include "host/SceneLoading.h"
#include "host/SceneSaving.h"
#include "host/commands/Commands.h"
#include "host/commands/LogFile.h"
#include "host/commands/NormalizeOption.h"

namespace tzhost {
namespace {

struct RoundTripArguments {
    std::string in;
    std::string out;
    std::string log;
    NormalizeArguments normalize;
};

void runRoundTrip(const CommandContext& context, const RoundTripArguments& arguments) {
    const ScenePtr scene = context.host.makeScene();
    LogFile log(context.terminal, arguments.log, arguments.in);
    const Drawing drawing = openDrawing(context.terminal, arguments.in, arguments.normalize);
    const InterruptScope interruptScope;
    importFile(context.host, *scene, drawing);
    OutputFile out(arguments.out, "save");
    exportScene(context.host, *scene, out);
    log.commit();
    out.commit();
}

}  // namespace

void addRoundTripCommand(CLI::App& app, CommandRun& run) {
    auto arguments = std::make_shared<RoundTripArguments>();
    CLI::App* const command = app.add_subcommand("roundtrip", "Read a drawing and write it again");
    command->add_option("IN.svg", arguments->in, "The drawing")->required();
    command->add_option("OUT.svg", arguments->out, "The drawing to write")->required();
    LogFile::addOption(*command, arguments->log);
    addNormalizeOptions(*command, arguments->normalize);
    command->footer("Example:\n  tzhost roundtrip logo.svg back.svg");
    command->callback([arguments, &run] {
        run = {arguments->in,
               [arguments](const CommandContext& context) { runRoundTrip(context, *arguments); }};
    });
}

}  // namespace tzhost
