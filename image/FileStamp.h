// What a file's state is recognised by: whether it is still the file that was read. Used by RendererPool.
#pragma once

#include <QString>
#include <cstdint>

namespace tzsvg {

struct FileStamp {
    uint64_t device = 0;
    uint64_t inode = 0;
    int64_t size = -1;  // -1: there is no such file
    int64_t seconds = 0;
    int64_t nanoseconds = 0;

    static FileStamp of(const QString& fileName);

    // Whether a later change is sure to give another stamp. A file changed again within one tick of the file
    // system's clock keeps its time.
    bool isSettled() const;

    friend bool operator==(const FileStamp& a, const FileStamp& b) {
        return a.device == b.device && a.inode == b.inode && a.size == b.size && a.seconds == b.seconds &&
               a.nanoseconds == b.nanoseconds;
    }
    friend bool operator!=(const FileStamp& a, const FileStamp& b) { return !(a == b); }
};

}  // namespace tzsvg
