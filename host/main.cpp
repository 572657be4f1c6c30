// tzhost: parses the command line, loads the module, runs the command, unloads, and turns failures into one
// line and an exit status.
#include <fcntl.h>
#include <unistd.h>

#include <QtGlobal>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/commandline/CommandLine.h"
#include "host/commands/Interrupts.h"
#include "host/core/Installed.h"
#include "host/core/OperationError.h"
#include "host/core/Utf8.h"

namespace tzhost {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

// Signals of failed writes are ignored: the write fails and the command cleans up. Standard streams that are
// closed are opened on /dev/null, or the next file that is opened would get their number.
void prepareStreams() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // open() takes the lowest free number, which is this one; read-only, so that a write to it fails.
        if (fcntl(stream, F_GETFD) < 0) open("/dev/null", O_RDONLY);
    }
}

// The module uses the same Qt in the same process: what is set here holds for it too.
void prepareProcess() {
    // File names are UTF-8 whatever the user's locale, and numbers are written as in the C locale.
    std::setlocale(LC_CTYPE, "C.UTF-8");  // NOLINT(concurrency-mt-unsafe): no other thread runs yet
    // stderr is for progress and for the one line of a failure, not for Qt's remarks.
    qInstallMessageHandler(
        [](QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*text*/) {});
}

void printError(const char* text) {
    std::fprintf(stderr, "tzhost: %s\n", text);
}

std::vector<std::filesystem::path> modulesOf(const CommandLine& line) {
    if (line.modules.empty()) return {installedFile("tzsvg.so")};
    return {line.modules.begin(), line.modules.end()};
}

int runCommand(const CommandLine& line, const std::vector<std::filesystem::path>& modules) {
    if (!line.isForced) {
        for (const std::string& output : {line.files.out, line.files.log, line.files.notes})
            requireOther(line.inputs, output);
    }
    const auto terminal = std::make_shared<Terminal>(line.isQuiet);
    terminal->setSubject(shownInput(line.files.in));
    CommandContext context(modules, terminal);
    const int status = line.run(context, line.files);
    requirePrinted();
    terminal->setSubject({});
    context.close();
    return status;
}

int runProgram(int argc, char** argv) {
    prepareStreams();
    prepareProcess();
    handleInterrupts();
    CommandLine line;
    try {
        line = parseCommandLine(argc, argv);
    } catch (const UsageError& error) {
        printError((toOneLine(error.what()) + " (tzhost --help tells more)").c_str());
        return kWrongUsage;
    }
    if (!line.run) return kDone;
    const std::vector<std::filesystem::path> modules = modulesOf(line);
    return inStep(line.files.in.empty() ? modules.front().native() : shownInput(line.files.in), line.command,
                  [&] { return runCommand(line, modules); });
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
        // Out of memory while the failure was described.
        printError("tzhost: run: 0x80000001 (out of memory)");
    }
    return interruptSignal() == 0 ? kFailed : exitStatusOf(interruptSignal());
}
