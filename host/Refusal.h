// Says why a module refused a drawing: the line that tells it goes on with the reason, which is the check's.
// For drawings as they are: what was normalized needs none.
#pragma once

#include "host/Checker.h"
#include "host/Drawing.h"
#include "host/core/OperationError.h"

namespace tzhost {

// The error of a step in which a module refused the drawing, with the reason behind it if the check finds
// one.
OperationError withReason(const OperationError& error, const Drawing& drawing, Purpose purpose);

// Has work done with a drawing.
template <class Work>
auto explainingRefusal(const Drawing& drawing, Purpose purpose, Work&& work) {
    try {
        return work();
    } catch (const OperationError& error) {
        throw withReason(error, drawing, purpose);
    }
}

}  // namespace tzhost
