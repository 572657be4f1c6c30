// tzhost check: whether drawings get through an import and an export, and what of them does not.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
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
std::vector<std::string> filesOf(const std::vector<std::string>& names) {
    std::vector<std::string> files;
    for (const std::string& name : names) {
        std::error_code error;
        if (!std::filesystem::is_directory(name, error)) {
            files.push_back(name);
            continue;
        }
        const auto first = static_cast<std::ptrdiff_t>(files.size());
        inStep(name, "list", [&] {
            for (const auto& entry : std::filesystem::recursive_directory_iterator(name)) {
                if (entry.is_regular_file() && isDrawing(entry.path()))
                    files.push_back(entry.path().native());
            }
        });
        std::sort(files.begin() + first, files.end());
    }
    return files;
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
        const std::string kind = finding.isRefusal() ? "refused" : finding.kind;
        const std::string hint = finding.remedy.empty() ? "" : "; --normalize: " + finding.remedy;
        lines.add(finding.line, finding.column, kind + ": " + describe(finding) + hint,
                  kind + ": " + finding.code + hint);
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

std::vector<DrawingCheck> checkFiles(const CheckArguments& arguments, const std::vector<std::string>& files,
                                     Terminal& terminal) {
    Progress progress(terminal, "checking", files.size());
    std::vector<DrawingCheck> checks;
    for (const std::string& file : files) {
        checks.push_back(checkDrawing(file));
        if (!arguments.json) printPlain(file, checks.back());
        progress.step(1);
    }
    if (arguments.json) printJson(checks);
    return checks;
}

std::string contentOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
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

CheckedDrawing lookAt(Host& host, const std::string& file, const DrawingCheck& check) {
    CheckedDrawing drawing{file, check, {contentOf(file), {}}, {}, {}, {}};
    if (check.isRefused()) {
        drawing.back.failure = describe(check.findings.front());
    } else {
        drawing.back = roundTrip(host, file);
    }
    try {
        const Drawing normalized = Drawing::normalized(file);
        drawing.normalized = roundTrip(host, normalized);
        drawing.notes = normalized.normalization()->notes;
    } catch (const OperationError& error) {
        drawing.normalized.failure = error.what();
    }
    return drawing;
}

void writePage(const CommandContext& context, const CheckArguments& arguments,
               const std::vector<std::string>& files, const std::vector<DrawingCheck>& checks) {
    OutputFile out(arguments.page, "write page");
    const std::string title = toOneLine(arguments.in.size() == 1 ? arguments.in.front() : "Drawings");
    CheckPage page(out, title, checks);
    Progress progress(context.terminal, "drawing the page", files.size());
    const Terminal::MessagesHeld held(context.terminal);  // the module's, on each of the drawings
    for (size_t i = 0; i < files.size(); ++i) {
        page.add(lookAt(context.host, files[i], checks[i]));
        progress.step(1);
    }
    page.end();
    out.commit();
}

}  // namespace

int runCheck(Terminal& terminal, const CheckArguments& arguments) {
    return statusOf(checkFiles(arguments, filesOf(arguments.in), terminal));
}

int runCheckPage(const CommandContext& context, const CheckArguments& arguments) {
    const std::vector<std::string> files = filesOf(arguments.in);
    const std::vector<DrawingCheck> checks = checkFiles(arguments, files, context.terminal);
    writePage(context, arguments, files, checks);
    return statusOf(checks);
}

}  // namespace tzhost
