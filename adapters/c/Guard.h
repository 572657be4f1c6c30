// The one gate of the C library: runs the work of a function, keeps exceptions inside, and notes for the
// thread what failed. Every function that can fail goes through it.
#pragma once

#include <string>
#include <string_view>

#include "adapters/c/tzhost.h"
#include "host/core/OperationError.h"

namespace tzh {

// A failure that the library finds itself; the text says what was wrong.
struct Refused {
    TzhStatus status;
    std::string reason;
};

// A caller's callback has stopped the work with this value.
struct Stopped {
    TzhStatus value;
};

// Notes the exception that is being handled, as what failed last on this thread.
TzhStatus noteFailure() noexcept;

// `work` returns nothing; it throws what it cannot do.
template <class Work>
TzhStatus guarded(Work&& work) noexcept {
    try {
        work();
        return TZH_OK;
    } catch (...) {
        return noteFailure();
    }
}

inline void require(bool holds, const char* reason) {
    if (!holds) throw Refused{TZH_INVALID, reason};
}

// Text of a caller's: NULL is empty. Throws when it is not UTF-8; `name` is the argument's.
std::string_view textOf(const char* text, const char* name);

// A text of a caller's that must say something.
std::string_view nameOf(const char* text, const char* name);

}  // namespace tzh
