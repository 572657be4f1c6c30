// tzhost check: whether drawings get through an import and an export, and what of them does not.
#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "host/SceneLoading.h"
#include "host/SceneSaving.h"
#include "host/check/CheckPage.h"
#include "host/commands/AlikeLines.h"
#include "host/commands/Commands.h"
#include "host/core/Observer.h"
#include "host/core/OperationError.h"
#include "host/core/Utf8.h"
#include "host/io/Files.h"

namespace tzhost {
namespace {

constexpr int kClean = 0;
constexpr int kRefused = 1;
constexpr int kLosses = 3;

bool isDrawing(const std::filesystem::path& file) {
    return file.extension() == ".svg" || file.extension() == ".svgz";
}

// Folders stand for the drawings in them and below, in the order of their names.
std::vector<InputFile> filesOf(const std::vector<std::string>& names) {
    std::vector<InputFile> files;
    for (const std::string& name : names) {
        std::error_code error;
        if (!std::filesystem::is_directory(name, error)) {
            files.push_back(openInput(name));
            continue;
        }
        std::vector<std::string> found;
        inStep(name, "list", [&] {
            for (const auto& entry : std::filesystem::recursive_directory_iterator(name)) {
                if (entry.is_regular_file() && isDrawing(entry.path()))
                    found.push_back(entry.path().native());
            }
        });
        std::sort(found.begin(), found.end());
        files.insert(files.end(), found.begin(), found.end());
    }
    return files;
}

// As an import gets it; as it is when it cannot be unpacked, which the check finds as well.
InputFile readable(const InputFile& file) {
    try {
        return unpacked(file);
    } catch (const OperationError& error) {
        if (error.step() != "unpack") throw;
        return file;
    }
}

void printPlain(const std::string& name, const DrawingCheck& check) {
    const std::string file = toOneLine(name);
    const size_t count = check.findings.size() + check.more;
    const char* const verdict = !check.isImported   ? "refused by the import"
                                : !check.isExported ? "imported, refused by the export"
                                : count == 0        ? "clean"
                                                    : "imported and exported, with losses";
    std::printf("%s: %s\n", file.c_str(), verdict);
    AlikeLines lines(file, [](const std::string& line) { std::printf("%s\n", line.c_str()); });
    for (const CheckFinding& finding : check.findings) {
        const std::string kind = (finding.isRefusal() ? "refused" : finding.kind) + ": ";
        const std::string hint = hintOf(finding);
        lines.add(finding.line, finding.column, std::string(kind).append(describe(finding)).append(hint),
                  std::string(kind).append(finding.code).append(hint));
    }
    lines.finish(check.more);
}

void printJson(const std::vector<DrawingCheck>& checks) {
    std::printf("[");
    for (size_t i = 0; i < checks.size(); ++i)
        std::printf("%s%s", i == 0 ? "" : ",\n", checks[i].json.c_str());
    std::printf("]\n");
}

int statusOf(const std::vector<DrawingCheck>& checks) {
    const auto isRefused = [](const DrawingCheck& check) { return check.isRefused(); };
    const auto isClean = [](const DrawingCheck& check) { return check.findings.empty(); };
    if (std::any_of(checks.begin(), checks.end(), isRefused)) return kRefused;
    return std::all_of(checks.begin(), checks.end(), isClean) ? kClean : kLosses;
}

std::vector<DrawingCheck> checkFiles(const CheckArguments& arguments, const std::vector<InputFile>& files,
                                     Terminal& terminal) {
    Progress progress(terminal, "checking", files.size());
    std::vector<DrawingCheck> checks;
    for (const InputFile& file : files) {
        checks.push_back(checkDrawing(readable(file)));
        if (!arguments.json) printPlain(file.name(), checks.back());
        progress.step(1);
    }
    if (arguments.json) printJson(checks);
    return checks;
}

// The drawing after an import and an export.
PagePicture roundTrip(Host& host, const Drawing& drawing) {
    try {
        const ScenePtr scene = host.makeScene();
        importFile(host, *scene, drawing);
        // Never committed: it is gone when it has been read.
        OutputFile out(std::filesystem::temp_directory_path() / "tzhost-check.svg", "save");
        exportScene(host, *scene, out);
        return {contentOf(out.temporaryName()), {}};
    } catch (const OperationError& error) {
        return {{}, error.what()};
    }
}

CheckedDrawing lookAt(Host& host, const InputFile& file, const DrawingCheck& check) {
    const InputFile plain = readable(file);
    CheckedDrawing drawing{file.name(), check, {contentOf(plain), {}}, {}, {}, {}};
    if (check.isRefused()) {
        drawing.back.failure = describe(check.findings.front());
    } else {
        drawing.back = roundTrip(host, plain);
    }
    try {
        const Drawing normalized = Drawing::normalized(file, Purpose::kScene);
        drawing.normalized = roundTrip(host, normalized);
        drawing.notes = normalized.normalization()->notes;
    } catch (const OperationError& error) {
        drawing.normalized.failure = error.what();
    }
    return drawing;
}

void writePage(CommandContext& context, const CheckArguments& arguments, const std::vector<InputFile>& files,
               const std::vector<DrawingCheck>& checks) {
    OutputFile out = openOutput(arguments.out, "write page");
    const std::string title =
        toOneLine(arguments.inputs.size() == 1 ? shownInput(arguments.inputs.front()) : "Drawings");
    CheckPage page(out, title, checks);
    Progress progress(context.terminal(), "drawing the page", files.size());
    const Terminal::MessagesHeld held(context.terminal());  // the module's, on each of the drawings
    for (size_t i = 0; i < files.size(); ++i) {
        page.add(lookAt(context.host(), files[i], checks[i]));
        progress.step(1);
    }
    page.end();
    out.commit();
}

}  // namespace

int runCheck(CommandContext& context, const CheckArguments& arguments) {
    const std::vector<InputFile> files = filesOf(arguments.inputs);
    if (!arguments.out.empty()) context.host();  // before anything is printed
    const std::vector<DrawingCheck> checks = checkFiles(arguments, files, context.terminal());
    if (!arguments.out.empty()) writePage(context, arguments, files, checks);
    return statusOf(checks);
}

}  // namespace tzhost
