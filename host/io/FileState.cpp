#include "host/io/FileState.h"

#include <sys/stat.h>

namespace tzhost {

FileState FileState::of(const InputFile& file) {
    struct stat status {};
    if (stat(file.readName().c_str(), &status) != 0) return {};
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

}  // namespace tzhost
