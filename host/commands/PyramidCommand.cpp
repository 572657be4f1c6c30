// tzhost pyramid: a drawing as tiles in files, with a page to look around in them.
#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <thread>

#include "host/commands/Commands.h"
#include "host/commands/LogFile.h"
#include "host/commands/NormalizeOption.h"
#include "host/core/Utf8.h"
#include "host/pyramid/Pyramid.h"

namespace tzhost {
namespace {

struct PyramidArguments {
    std::string in;
    std::string log;
    NormalizeArguments normalize;
    std::string folder;
    PyramidOptions options{12, std::max(1U, std::thread::hardware_concurrency())};
};

void runPyramid(const CommandContext& context, const PyramidArguments& arguments) {
    LogFile log(context.terminal, arguments.log, arguments.in);
    const Drawing drawing = openDrawing(context.terminal, arguments.in, arguments.normalize);
    const InterruptScope interruptScope;
    const PyramidSummary summary = writePyramid(context.host, drawing, arguments.folder, arguments.options);
    log.commit();
    std::printf("%s: %llu tiles written, %llu kept, %.3f s -> %s\n", toOneLine(arguments.in).c_str(),
                static_cast<unsigned long long>(summary.written),
                static_cast<unsigned long long>(summary.kept), summary.seconds,
                toOneLine((std::filesystem::path(arguments.folder) / "index.html").native()).c_str());
}

}  // namespace

void addPyramidCommand(CLI::App& app, CommandRun& run) {
    auto arguments = std::make_shared<PyramidArguments>();
    CLI::App* const command = app.add_subcommand(
        "pyramid", "Write a drawing as Deep Zoom tiles, with a page to look around in them");
    command->add_option("IN.svg", arguments->in, "The drawing")->required();
    command->add_option("OUTDIR", arguments->folder, "The folder to write to; tiles that are there are kept")
        ->required();
    command
        ->add_option("--max-level", arguments->options.maxLevel,
                     "The finest level: its long side is 2^N pixels")
        ->type_name("N")
        ->capture_default_str()
        ->check(CLI::Range(0, 16));
    command->add_option("--threads", arguments->options.threads, "Draw on N threads")
        ->type_name("N")
        ->capture_default_str()
        ->check(CLI::Range(1, 256));
    LogFile::addOption(*command, arguments->log);
    addNormalizeOptions(*command, arguments->normalize);
    command->footer("Example:\n  tzhost pyramid town-map.svg town-map --max-level 13");
    command->callback([arguments, &run] {
        run = {arguments->in,
               [arguments](const CommandContext& context) { runPyramid(context, *arguments); }};
    });
}

}  // namespace tzhost
