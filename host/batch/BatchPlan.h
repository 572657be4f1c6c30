// What a command does with many files: which become which, and which are left alone.
#pragma once

#include <string>
#include <vector>

#include "host/commands/FileArguments.h"

namespace tzhost {

struct BatchArguments {
    std::string folder;  // `--output`; empty: one file is read and one is written
    std::string ending;  // of the files to write, "json"
    unsigned jobs = 0;   // `--jobs`; 0: one for each processor that this process may use
    bool isUpdate = false;
};
inline bool isBatch(const BatchArguments& arguments) {
    return !arguments.folder.empty();
}

struct BatchPlan {
    std::vector<CommandFiles> files;  // those to do, in the order that they were given
    size_t upToDate = 0;              // left out, since what they become is newer
};

// Every input becomes a file of its name in the folder, with the ending. `given` are the other files of the
// command line: its log and notes are folders here, for a file of each input. Makes the folders. Throws
// UsageError when two inputs would become the same file; OperationError when one would replace an input,
// unless that is forced, and when a folder cannot be made.
BatchPlan planBatch(const std::vector<std::string>& inputs, const CommandFiles& given,
                    const BatchArguments& arguments, bool isForced);

}  // namespace tzhost
