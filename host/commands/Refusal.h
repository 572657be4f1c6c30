// Says why: when the module refuses a drawing, the line that tells it goes on with the reason; when it takes
// a drawing and drops something of it, there is a warning. Both are the check's, and for drawings as they
// are: what was normalized needs neither.
#pragma once

#include "host/Checker.h"
#include "host/Drawing.h"
#include "host/commands/Terminal.h"
#include "host/core/OperationError.h"

namespace tzhost {

// The error of a step in which a module refused the drawing, with the reason behind it if the check finds
// one.
OperationError withReason(const OperationError& error, const Drawing& drawing, CheckFor purpose);

// Has work done with a drawing.
template <class Work>
auto explainingRefusal(const Drawing& drawing, CheckFor purpose, Work&& work) {
    try {
        return work();
    } catch (const OperationError& error) {
        throw withReason(error, drawing, purpose);
    }
}

// Warns of what an import has left out of a drawing or read otherwise without a word, one line for each kind.
void warnOfSilentLosses(Terminal& terminal, const Drawing& drawing);

}  // namespace tzhost
