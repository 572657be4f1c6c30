// How a failure of a command is told: one line on stderr, and the exit status. Called by main() and for each
// file of a batch.
#pragma once

#include <cstdio>

#include "host/commands/Interrupts.h"
#include "host/core/OperationError.h"

namespace tzhost {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

// Behind all that was printed until then.
inline void printError(const char* text) {
    std::fflush(stdout);
    std::fprintf(stderr, "tzhost: %s\n", text);
}

// Runs work that answers an exit status; what it throws is printed. [host thread]
template <class Work>
int reported(Work&& work) {
    try {
        return work();
    } catch (const OperationError& error) {
        printError(error.what());
    } catch (...) {
        // Out of memory while the failure was described.
        printError("tzhost: run: 0x80000001 (out of memory)");
    }
    return interruptSignal() == 0 ? kFailed : exitStatusOf(interruptSignal());
}

}  // namespace tzhost
