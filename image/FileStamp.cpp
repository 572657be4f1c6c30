#include "image/FileStamp.h"

#include <sys/stat.h>

#include <QFile>
#include <chrono>

namespace tzsvg {

FileStamp FileStamp::of(const QString& fileName) {
    struct stat status = {};
    if (::stat(QFile::encodeName(fileName).constData(), &status) != 0) return {};
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

bool FileStamp::isSettled() const {
    // Times without a fraction come from file systems that count in seconds, or in two.
    constexpr std::chrono::nanoseconds kCoarseTick = std::chrono::seconds(2);
    constexpr std::chrono::nanoseconds kTick = std::chrono::milliseconds(20);
    const auto changed = std::chrono::seconds(seconds) + std::chrono::nanoseconds(nanoseconds);
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto age = std::chrono::duration_cast<std::chrono::nanoseconds>(now) - changed;
    return age > (nanoseconds == 0 ? kCoarseTick : kTick);
}

}  // namespace tzsvg
