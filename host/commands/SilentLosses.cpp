#include "host/commands/SilentLosses.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "host/Checker.h"
#include "host/core/OperationError.h"
#include "host/core/Utf8.h"

namespace tzhost {
namespace {

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
    if (root != std::string_view::npos && text.find('<', root + 1) != std::string_view::npos) return true;
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

void warnOfSilentLosses(Terminal& terminal, const Drawing& drawing) {
    if (drawing.normalization()) return;
    if (!maySilentlyLose(contentOf(drawing.file()))) return;
    try {
        const DrawingCheck check = checkDrawing(drawing.file());
        for (const auto& [first, count] : silentLosses(check)) {
            const std::string more = count > 1 ? " (" + std::to_string(count) + " of them)" : "";
            terminal.warn(toOneLine(drawing.name() + ": " + explain(*first, more), 1000));
        }
    } catch (const OperationError&) {
        // There is no check to ask.
    }
}

}  // namespace tzhost
