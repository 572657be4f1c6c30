// The note of the last failure is a thread's own, so that a caller reads what happened to it.
#include "adapters/c/Guard.h"

#include <new>

#include "adapters/c/Structs.h"
#include "host/core/Utf8.h"

namespace tzh {
namespace {

struct Failure {
    std::string message;
    std::string file;
    std::string step;
    uint32_t code = kTzOk;
};

Failure& lastFailure() {
    thread_local Failure failure;
    return failure;
}

TzhStatus statusOf(TzResult code) {
    switch (code) {
        case kTzOutOfMemory:
            return TZH_NO_MEMORY;
        case kTzCancelled:
            return TZH_CANCELLED;
        case kTzInvalidArgument:
            return TZH_INVALID;
        case kTzNotFound:
            return TZH_NOT_FOUND;
        case kTzWrongThread:
            return TZH_WRONG_THREAD;
        case kTzNotRecognised:
            return TZH_REFUSED;
        default:
            return TZH_FAILED;
    }
}

// A loader or saver that only fails has refused what it was given.
bool isRefusal(const tzhost::OperationError& error) {
    const std::string& step = error.step();
    return error.result() == kTzFailed &&
           (step == "normalize" || step == "recognise" || step == "load" || step == "save");
}

TzhStatus note(TzhStatus status, TzResult code, std::string_view message, std::string_view file = {},
               std::string_view step = {}) {
    lastFailure() = {std::string(message), std::string(file), std::string(step), code};
    return status;
}

}  // namespace

TzhStatus noteFailure() noexcept {
    try {
        try {
            throw;
        } catch (const Stopped& stopped) {
            return note(stopped.value, kTzCancelled, "stopped by the caller");
        } catch (const Refused& refused) {
            return note(refused.status, kTzInvalidArgument, refused.reason);
        } catch (const tzhost::OperationError& error) {
            const TzhStatus status = error.step() == "load normalizer" ? TZH_UNAVAILABLE
                                     : isRefusal(error)                ? TZH_REFUSED
                                                                       : statusOf(error.result());
            return note(status, error.result(), error.what(), error.file(), error.step());
        } catch (const CTzError& error) {
            return note(statusOf(error.result()), error.result(), error.what());
        } catch (const std::bad_alloc&) {
            return note(TZH_NO_MEMORY, kTzOutOfMemory, tzResultText(kTzOutOfMemory));
        } catch (const std::exception& error) {
            return note(TZH_FAILED, kTzFailed, error.what());
        } catch (...) {
            return note(TZH_FAILED, kTzFailed, tzResultText(kTzFailed));
        }
    } catch (...) {
        // No memory for the note either: an empty one takes none.
        lastFailure() = {};
        lastFailure().code = kTzOutOfMemory;
        return TZH_NO_MEMORY;
    }
}

std::string_view textOf(const char* text, const char* name) {
    const std::string_view view = text ? std::string_view(text) : std::string_view();
    if (!tzhost::isUtf8(view)) throw Refused{TZH_INVALID, std::string(name) + ": not UTF-8"};
    return view;
}

std::string_view nameOf(const char* text, const char* name) {
    const std::string_view view = textOf(text, name);
    if (view.empty()) throw Refused{TZH_INVALID, std::string(name) + ": missing"};
    return view;
}

}  // namespace tzh

void tzh_last_error(TzhError* error) {
    if (!error) return;
    const auto& last = tzh::lastFailure();
    TzhError told = {error->size, last.message.c_str(), last.file.c_str(), last.step.c_str(), last.code};
    tzh::copyOut(told, error);
}
