// Warns when the module takes a drawing and drops something of it without a word. What is told is the
// check's, and for drawings as they are: what was normalized needs no warning.
#pragma once

#include "host/Drawing.h"
#include "host/commands/Terminal.h"

namespace tzhost {

// Warns of what an import has left out of a drawing or read otherwise, one line for each kind.
void warnOfSilentLosses(Terminal& terminal, const Drawing& drawing);

}  // namespace tzhost
