// tzhost import: a drawing into a new scene, and the scene into a scene file.
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>
#include <string>

#include "host/SceneLoading.h"
#include "host/commands/Commands.h"
#include "host/commands/LogFile.h"
#include "host/commands/NormalizeOption.h"
#include "host/core/Utf8.h"
#include "host/scenefile/SceneWriter.h"

namespace tzhost {
namespace {

struct ImportArguments {
    std::string in;
    std::string scene;
    std::string log;
    NormalizeArguments normalize;
    int64_t cancelAfter = 0;  // signed, or the parser would take -1 for a very large number
};

void runImport(const CommandContext& context, const ImportArguments& arguments) {
    const ScenePtr scene = context.host.makeScene();
    LogFile log(context.terminal, arguments.log, arguments.in);
    const Drawing drawing = openDrawing(context.terminal, arguments.in, arguments.normalize);
    const InterruptScope interruptScope;
    const ImportOptions options{static_cast<uint64_t>(arguments.cancelAfter)};
    const ImportSummary summary = importFile(context.host, *scene, drawing, options);
    OutputFile out(arguments.scene, "write");
    writeScene(*scene, out);
    log.commit();
    std::printf(
        "%s: %llu shapes, %llu polygons, %llu points, %.3f s -> %s\n", toOneLine(arguments.in).c_str(),
        static_cast<unsigned long long>(summary.shapes), static_cast<unsigned long long>(summary.polygons),
        static_cast<unsigned long long>(summary.points), summary.seconds, toOneLine(arguments.scene).c_str());
    requirePrinted();
    out.commit();
}

}  // namespace

void addImportCommand(CLI::App& app, CommandRun& run) {
    auto arguments = std::make_shared<ImportArguments>();
    CLI::App* const command = app.add_subcommand("import", "Read a drawing into a scene file");
    command->add_option("IN.svg", arguments->in, "The drawing")->required();
    command->add_option("SCENE.json", arguments->scene, "The scene file to write")->required();
    LogFile::addOption(*command, arguments->log);
    addNormalizeOptions(*command, arguments->normalize);
    command->add_option("--cancel-after", arguments->cancelAfter, "Cancel at the monitor's N-th step")
        ->type_name("N")
        ->check(CLI::Range(int64_t{1}, std::numeric_limits<int64_t>::max()));
    command->footer("Example:\n  tzhost import logo.svg logo.json --log logo.log");
    command->callback([arguments, &run] {
        run = {arguments->in, [arguments](const CommandContext& context) { runImport(context, *arguments); }};
    });
}

}  // namespace tzhost
