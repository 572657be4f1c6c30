#include "host/core/OperationError.h"

#include <array>
#include <cstdio>
#include <exception>

#include "host/core/Utf8.h"

namespace tzhost {
namespace {

std::string line(std::string_view file, std::string_view step, TzResult code, std::string_view reason) {
    std::array<char, 16> hexadecimal{};
    std::snprintf(hexadecimal.data(), hexadecimal.size(), "0x%08X", static_cast<unsigned>(code));
    std::string text = toOneLine(file, 4096);
    text.append(": ").append(step).append(": ").append(hexadecimal.data()).append(" (");
    text.append(toOneLine(reason.empty() ? tzResultText(code) : reason));
    return text.append(")");
}

}  // namespace

OperationError::OperationError(std::string_view file, std::string_view step, TzResult code,
                               std::string_view reason)
    : CTzError(code),
      told_(std::make_shared<const Told>(
          Told{line(file, step, code, reason), std::string(file), std::string(step)})) {}

OperationError OperationError::explained(std::string_view why) const {
    OperationError error = *this;
    error.told_ = std::make_shared<const Told>(
        Told{told_->line + ": " + toOneLine(why, 1000), told_->file, told_->step});
    return error;
}

OperationError failureOfStep(std::string_view file, std::string_view step) {
    std::string reason;
    const TzResult code = tzGate([&] {
        try {
            throw;
        } catch (const std::exception& error) {
            reason = error.what();
            throw;
        }
    });
    // The text of a specific code says more than the exception's; the latter is used for the general failure
    // code only.
    return {file, step, code, code == kTzFailed ? reason : std::string()};
}

}  // namespace tzhost
