// The files that a command line names: `-` for standard input and output, the endings of outputs, and outputs
// that are the input. Used by the command line and by every command.
#pragma once

#include <cstdint>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "host/io/Files.h"
#include "host/io/InputFile.h"

namespace tzhost {

// Wrong usage; what() says what is wrong.
class UsageError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

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

// Throws UsageError when two outputs of a command are one file, or are both standard output: one would be
// lost in the other. Devices and pipes may be named twice.
void requireDistinctOutputs(const CommandFiles& files);

// The files that are read, by what they are and not by their names.
class InputSet {
  public:
    explicit InputSet(const std::vector<std::string>& inputs);

    // Throws OperationError, step "write", when the output is one of them, through links as well.
    void requireOther(const std::string& output) const;

  private:
    std::set<std::pair<uint64_t, uint64_t>> files_;  // device and number
};

}  // namespace tzhost
