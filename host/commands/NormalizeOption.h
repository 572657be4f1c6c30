// `--normalize` and `--notes FILE`: normalizes the drawing of a command first, and prints and writes the
// notes. Used by every command that takes drawings.
#pragma once

#include <string>

#include "host/Drawing.h"
#include "host/commands/Commands.h"

namespace tzhost {

// The drawing that the command reads, normalized when it was asked for, its notes told. Throws
// OperationError.
Drawing openDrawing(Terminal& terminal, const InputFile& in, const DrawingArguments& arguments,
                    Purpose purpose);

// Prints the notes on stderr, a line each; of many similar ones a few, and the number of the others. All of
// them go to `notesFile` as JSON, unless that is empty.
void tellNotes(Terminal& terminal, const InputFile& in, const NormalizedText& text,
               const std::string& notesFile);

}  // namespace tzhost
