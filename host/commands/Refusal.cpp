#include "host/commands/Refusal.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <vector>

#include "host/core/Utf8.h"

namespace tzhost {
namespace {

// Steps in which the module works on a drawing.
bool isModulesStep(const std::string& step) {
    return step == "recognise" || step == "load" || step == "save";
}

// Whether the reason is one for which no module takes the file for a drawing at all.
bool isOfRecognition(const CheckFinding& reason) {
    static constexpr std::array<std::string_view, 5> kCodes = {"empty", "not-svg", "not-well-formed",
                                                               "compressed", "line-break"};
    return std::find(kCodes.begin(), kCodes.end(), reason.code) != kCodes.end();
}

std::string placeOf(const CheckFinding& finding) {
    if (finding.line == 0) return {};
    return "line " + std::to_string(finding.line) + ", column " + std::to_string(finding.column) + ": ";
}

std::string hintOf(const CheckFinding& finding) {
    return finding.remedy.empty() ? "" : "; --normalize: " + finding.remedy;
}

// Whether a text has anything that an import could drop or join without a word. Nearly all that are large
// have not, and need no check: this is a look at the bytes.
bool maySilentlyLose(std::string_view text) {
    static constexpr std::array<std::string_view, 17> kTraces = {
        "<text",   "<image",  "<use",        "<style",        "<foreignObject", "<flowRoot",
        "<a ",     "<a>",     "<script",     "<animate",      "<filter",        " mask=",
        " filter", "marker-", "paint-order", "vector-effect", "mix-blend"};
    const auto isIn = [text](std::string_view trace) {
        return memmem(text.data(), text.size(), trace.data(), trace.size()) != nullptr;
    };
    if (std::any_of(kTraces.begin(), kTraces.end(), isIn)) return true;
    const size_t root = text.rfind("</svg");
    if (root != std::string_view::npos && text.find("<", root + 1) != std::string_view::npos) return true;
    const auto isPart = [](char c) { return (c >= '0' && c <= '9') || c == '.'; };
    for (size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1)) {
        const size_t before = at > 0 && text[at - 1] == '\r' ? 2 : 1;
        if (at >= before && at + 1 < text.size() && isPart(text[at - before]) && isPart(text[at + 1]))
            return true;
    }
    return false;
}

// What goes without a word: what is dropped, numbers joined, a scene that stays empty.
bool isSilent(const CheckFinding& finding) {
    return finding.kind == "dropped" || finding.code == "joined-numbers" || finding.code == "behind-root" ||
           finding.code == "no-polygon";
}

struct Loss {
    const CheckFinding* first;
    size_t count;
};

std::vector<Loss> silentLosses(const DrawingCheck& check) {
    std::vector<Loss> losses;
    for (const CheckFinding& finding : check.findings) {
        if (!isSilent(finding)) continue;
        const auto same = std::find_if(losses.begin(), losses.end(),
                                       [&](const Loss& loss) { return loss.first->code == finding.code; });
        if (same != losses.end()) {
            ++same->count;
        } else {
            losses.push_back({&finding, 1});
        }
    }
    return losses;
}

}  // namespace

OperationError withReason(const OperationError& error, const Drawing& drawing, CheckFor purpose) {
    if (drawing.normalization() || !isModulesStep(error.step()) || error.result() == kTzCancelled)
        return error;
    try {
        const DrawingCheck check = checkDrawing(drawing.file(), purpose);
        if (!check.isRefused()) return error;
        const CheckFinding& reason = check.findings.front();
        // What was recognised all the same is no drawing, but something that another module reads.
        if (isOfRecognition(reason) && error.step() != "recognise") return error;
        return error.explained(placeOf(reason) + describe(reason) + hintOf(reason));
    } catch (const OperationError&) {
        return error;  // there is no check to ask
    }
}

void warnOfSilentLosses(Terminal& terminal, const Drawing& drawing) {
    if (drawing.normalization()) return;
    if (!maySilentlyLose(contentOf(drawing.file()))) return;
    try {
        const DrawingCheck check = checkDrawing(drawing.file());
        for (const auto& [first, count] : silentLosses(check)) {
            const std::string more = count > 1 ? " (" + std::to_string(count) + " of them)" : "";
            terminal.warn(toOneLine(
                drawing.name() + ": " + placeOf(*first) + describe(*first) + more + hintOf(*first), 1000));
        }
    } catch (const OperationError&) {
        // There is no check to ask.
    }
}

}  // namespace tzhost
