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

#include "host/batch/Batch.h"
#include "host/commandline/CommandLine.h"
#include "host/commands/Interrupts.h"
#include "host/commands/Reporting.h"
#include "host/core/Installed.h"
#include "host/core/OperationError.h"
#include "host/core/Utf8.h"

namespace tzhost {
namespace {

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

std::vector<std::filesystem::path> modulesOf(const CommandLine& line) {
    if (line.modules.empty()) return {installedFile("tzsvg.so")};
    return {line.modules.begin(), line.modules.end()};
}

// The command, for one file.
int runCommand(const CommandLine& line, const std::shared_ptr<Terminal>& terminal) {
    if (!line.isForced) {
        const InputSet read(line.inputs);
        for (const std::string& output : {line.files.out, line.files.log, line.files.notes})
            read.requireOther(output);
    }
    terminal->setSubject(shownInput(line.files.in));
    CommandContext context(modulesOf(line), terminal);
    const int status = line.run(context, line.files);
    terminal->setSubject({});
    context.close();
    return status;
}

int run(const CommandLine& line, const BatchPlan& plan) {
    const auto terminal = std::make_shared<Terminal>(line.isQuiet);
    const int status = isBatch(line.batch)
                           ? runBatch({line.command, line.run, modulesOf(line)}, plan, line.batch, terminal)
                           : runCommand(line, terminal);
    requirePrinted();
    return status;
}

// What a failure that names no file is about.
std::string subjectOf(const CommandLine& line) {
    if (isBatch(line.batch)) return line.batch.folder;
    return line.inputs.front().empty() ? modulesOf(line).front().native() : shownInput(line.inputs.front());
}

int runProgram(int argc, char** argv) {
    prepareStreams();
    prepareProcess();
    handleInterrupts();
    try {
        const CommandLine line = parseCommandLine(argc, argv);
        if (!line.run) return kDone;
        BatchPlan plan;
        if (isBatch(line.batch)) {
            plan = planBatch(line.inputs, line.files, line.batch, line.isForced);
        } else {
            requireDistinctOutputs(line.files);
        }
        return inStep(subjectOf(line), line.command, [&] { return run(line, plan); });
    } catch (const UsageError& error) {
        printError((toOneLine(error.what(), 1000) + " (tzhost --help tells more)").c_str());
        return kWrongUsage;
    }
}

}  // namespace
}  // namespace tzhost

int main(int argc, char** argv) {
    using namespace tzhost;
    return reported([&] { return inStep("tzhost", "start", [&] { return runProgram(argc, argv); }); });
}
