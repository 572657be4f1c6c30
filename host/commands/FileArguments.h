// The files that a command line names: `-` for standard input and output, the endings of outputs, and outputs
// that are the input. Used by the command line and by every command.
#pragma once

#include <string>
#include <vector>

#include "host/io/Files.h"
#include "host/io/InputFile.h"

namespace tzhost {

// The files of a command as they were typed; empty: none.
struct CommandFiles {
    std::string in;  // what it reads
    std::string out;
    std::string log;    // `--log`
    std::string notes;  // `--notes`
};

inline bool isStandardStream(const std::string& argument) {
    return argument == "-";
}

// For messages.
std::string shownInput(const std::string& argument);

// Standard input is read whole. Throws OperationError.
InputFile openInput(const std::string& argument);

// Throws OperationError of that step.
OutputFile openOutput(const std::string& argument, const char* step);

// What an output is written as: that of the formats ("png") in which its name ends. The first one where no
// ending tells: of names without one, `-`, folders (for which there will be an error), pipes and what else is
// no regular file. Empty: the name ends otherwise.
std::string outputFormat(const std::string& argument, const std::vector<std::string>& formats);

// Throws OperationError, step "write", when the output is one of the inputs, through links as well.
void requireOther(const std::vector<std::string>& inputs, const std::string& output);

}  // namespace tzhost
