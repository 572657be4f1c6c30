// See the header.
#include "host/io/InputFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "host/core/OperationError.h"
#include "host/core/Utf8.h"

namespace tzhost {

void requireReadable(const std::filesystem::path& file) {
    // Not opened: the reader of a pipe may open it once only.
    struct stat present {};
    int error = 0;
    if (stat(file.c_str(), &present) != 0 || access(file.c_str(), R_OK) != 0) {
        error = errno;
    } else if (S_ISDIR(present.st_mode)) {
        error = EISDIR;
    }
    if (error == 0) return;
    const bool missing = error == ENOENT || error == ENOTDIR;
    throw OperationError(file.native(), "open", missing ? kTzNotFound : kTzFailed, std::strerror(error));
}

void requireUtf8Name(const std::filesystem::path& file, std::string_view step) {
    if (!isUtf8(file.native()))
        throw OperationError(file.native(), step, kTzInvalidArgument, "the name is not UTF-8");
}

}  // namespace tzhost
