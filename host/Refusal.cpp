#include "host/Refusal.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "host/Checker.h"

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

}  // namespace

OperationError withReason(const OperationError& error, const Drawing& drawing, Purpose purpose) {
    if (drawing.normalization() || !isModulesStep(error.step()) || error.result() == kTzCancelled)
        return error;
    try {
        const DrawingCheck check = checkDrawing(drawing.file(), purpose);
        if (!check.isRefused()) return error;
        const CheckFinding& reason = check.findings.front();
        // What was recognised all the same is no drawing, but something that another module reads.
        if (isOfRecognition(reason) && error.step() != "recognise") return error;
        return error.explained(explain(reason));
    } catch (const OperationError&) {
        return error;  // there is no check to ask
    }
}

}  // namespace tzhost
