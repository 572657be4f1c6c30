// What tells that a file has changed since it was last looked at.
#pragma once

#include <cstdint>

#include "host/io/InputFile.h"

namespace tzhost {

struct FileState {
    uint64_t device = 0;
    uint64_t inode = 0;
    int64_t size = -1;  // -1: there is no such file
    int64_t seconds = 0;
    int64_t nanoseconds = 0;

    static FileState of(const InputFile& file);

    friend bool operator==(const FileState& a, const FileState& b) {
        return a.device == b.device && a.inode == b.inode && a.size == b.size && a.seconds == b.seconds &&
               a.nanoseconds == b.nanoseconds;
    }
};

}  // namespace tzhost
