// `--normalize` and `--notes FILE`: the drawing of a command rewritten first, and what was told about it.
// Used by every command that takes drawings.
#pragma once

#include <string>

#include "host/Drawing.h"
#include "host/commands/Terminal.h"

namespace tzhost {

struct NormalizeArguments {
    bool normalize = false;
    std::string notes;
};

// The drawing that the command reads, normalized when it was asked for, its notes told. Throws
// OperationError.
Drawing openDrawing(Terminal& terminal, const std::string& in, const NormalizeArguments& arguments);

// Tells the notes on stderr, a line each; of many alike no more than a few, and how many more there are. All
// go to `notesFile` as JSON, unless that is empty.
void tellNotes(Terminal& terminal, const std::string& in, const NormalizedText& text,
               const std::string& notesFile);

}  // namespace tzhost
