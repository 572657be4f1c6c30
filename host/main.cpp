// tzhost: the command line of the reference host. Parses it, loads the module, runs the command, unloads, and
// turns failures into one line and an exit status.
#include <fcntl.h>
#include <unistd.h>

#include <QtGlobal>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "host/ModuleLibrary.h"
#include "host/commands/Commands.h"
#include "host/core/OperationError.h"
#include "host/core/Utf8.h"

namespace tzhost {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

// A write that cannot be done fails, and what was begun is cleared away: nothing of it may end the program,
// or go to a file that happens to have the number of a closed stream.
void prepareStreams() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // It takes the lowest free number, this one; for reading, so that a write to it fails.
        if (fcntl(stream, F_GETFD) < 0) open("/dev/null", O_RDONLY);
    }
}

// The module uses the same Qt in the same process: what is set here holds for it too.
void prepareProcess() {
    // File names are UTF-8 whatever the user's locale, and numbers are written as in the C locale.
    std::setlocale(LC_CTYPE, "C.UTF-8");  // NOLINT(concurrency-mt-unsafe): no other thread runs yet
    // stderr is for progress and for the one line of a failure, not for the toolkit's remarks.
    qInstallMessageHandler(
        [](QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*text*/) {});
}

// In the build tree and when installed.
std::filesystem::path moduleBesideProgram() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "tzsvg.so";
}

void printError(const char* text) {
    std::fprintf(stderr, "tzhost: %s\n", text);
}

void describeProgram(CLI::App& app, std::string& moduleFile) {
    app.name("tzhost");
    app.description(
        "tzhost, a reference host without a window: loads a module, offers it the services of a host, and "
        "does\n"
        "with its servers what a 3D application does.");
    app.footer(
        "Examples:\n"
        "  tzhost servers                       what the module offers\n"
        "  tzhost import logo.svg logo.json     a drawing into a scene\n"
        "  tzhost export logo.json back.svg     the scene back into a drawing\n"
        "  tzhost preview logo.json logo.png    a picture of the scene\n"
        "  tzhost pyramid logo.svg logo/        the drawing as tiles, with a page to look around in them\n"
        "`tzhost COMMAND --help` tells the options of a command.\n"
        "Exit status: 0 done, 1 refused or failed (one line on stderr says what, where and why), 2 wrong "
        "usage.");
    app.add_option("--module", moduleFile, "The module file; without it, the module beside tzhost")
        ->type_name("FILE");
    app.require_subcommand(1);
}

void runCommand(const CommandRun& run, const std::filesystem::path& module) {
    const auto terminal = std::make_shared<Terminal>();
    if (run.workAlone) {
        run.workAlone(*terminal);
        return requirePrinted();
    }
    Session session(module, terminal);
    run.work({session.host, *terminal});
    requirePrinted();
    // The work is done and stands; what the module did not let go of is told all the same.
    for (const auto& [operation, times] : session.host.gate().misuses()) {
        std::fprintf(stderr, "warning: the module called %s off the host thread, %u times\n",
                     operation.c_str(), times);
    }
    for (const std::string& report : session.module.unload()) {
        std::fprintf(stderr, "warning: at unload: %s\n", report.c_str());
    }
}

int runProgram(int argc, char** argv) {
    prepareStreams();
    prepareProcess();
    CLI::App app;
    std::string moduleFile;
    CommandRun run;
    describeProgram(app, moduleFile);
    addServersCommand(app, run);
    addImportCommand(app, run);
    addExportCommand(app, run);
    addRoundTripCommand(app, run);
    addPreviewCommand(app, run);
    addImageInfoCommand(app, run);
    addTileCommand(app, run);
    addSampleCommand(app, run);
    addPyramidCommand(app, run);
    addNormalizeCommand(app, run);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        return app.exit(help);
    } catch (const CLI::ParseError& error) {
        printError((toOneLine(error.what()) + " (tzhost --help tells more)").c_str());
        return kWrongUsage;
    }
    const std::filesystem::path module =
        moduleFile.empty() ? moduleBesideProgram() : std::filesystem::path(moduleFile);
    inStep(run.file.empty() ? module.native() : run.file, app.get_subcommands().front()->get_name(),
           [&] { runCommand(run, module); });
    return kDone;
}

}  // namespace
}  // namespace tzhost

int main(int argc, char** argv) {
    using namespace tzhost;
    try {
        return inStep("tzhost", "start", [&] { return runProgram(argc, argv); });
    } catch (const OperationError& error) {
        printError(error.what());
    } catch (...) {
        // There is not even the memory to say where it ran out.
        printError("tzhost: run: 0x80000001 (out of memory)");
    }
    return kFailed;
}
