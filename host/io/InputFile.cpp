#include "host/io/InputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <utility>

#include "host/core/OperationError.h"

namespace tzhost {
namespace {

constexpr size_t kMostUnpacked = size_t{256} << 20U;
constexpr unsigned kChunk = 1U << 17U;

struct CloseGzip {
    void operator()(gzFile file) const { gzclose_r(file); }
};
using GzipFile = std::unique_ptr<gzFile_s, CloseGzip>;

// Plain files have their regular place on the disk: a pipe must not be looked at before its reader.
bool isCompressed(const std::string& fileName) {
    struct stat status {};
    if (stat(fileName.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
    char first[2] = {};
    std::ifstream(fileName, std::ios::binary).read(first, sizeof first);
    return first[0] == '\x1F' && first[1] == '\x8B';
}

// zlib gives plain files as they are.
std::string readAll(gzFile file, const std::string& name) {
    std::string text;
    int count = 1;
    while (count > 0) {
        const size_t before = text.size();
        text.resize(before + kChunk);
        count = gzread(file, &text[before], kChunk);
        text.resize(before + static_cast<size_t>(std::max(count, 0)));
        if (text.size() > kMostUnpacked && gzdirect(file) == 0)
            throw OperationError(name, "unpack", kTzFailed, "it unpacks to more than 256 MiB");
    }
    int error = Z_OK;
    const char* const message = gzerror(file, &error);
    if (error == Z_ERRNO) throw OperationError(name, "read", kTzFailed, std::strerror(errno));
    // Z_BUF_ERROR: it was cut off.
    if (error != Z_OK && error != Z_BUF_ERROR)
        throw OperationError(name, "unpack", kTzFailed,
                             std::string("its gzip compression is broken: ") + message);
    return text;
}

}  // namespace

InputFile InputFile::ofText(std::string name, std::string_view text) {
    InputFile file;
    file.name_ = std::move(name);
    file.text_ = std::make_shared<const PrivateFile>(text);
    return file;
}

void requireReadable(const InputFile& file) {
    // Not opened: a pipe can be opened only once, by its reader.
    struct stat present {};
    int error = 0;
    if (stat(file.readName().c_str(), &present) != 0 || access(file.readName().c_str(), R_OK) != 0) {
        error = errno;
    } else if (S_ISDIR(present.st_mode)) {
        error = EISDIR;
    }
    if (error == 0) return;
    const bool missing = error == ENOENT || error == ENOTDIR;
    throw OperationError(file.name(), "open", missing ? kTzNotFound : kTzFailed, std::strerror(error));
}

std::string contentOf(const InputFile& file) {
    std::ifstream stream(file.readName(), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

InputFile unpacked(const InputFile& file) {
    requireReadable(file);
    if (!isCompressed(file.readName())) return file;
    return readStream(open(file.readName().c_str(), O_RDONLY | O_CLOEXEC), file.name());
}

InputFile readStream(int descriptor, const std::string& name) {
    return inStep(name, "read", [&] {
        const GzipFile stream(descriptor < 0 ? nullptr : gzdopen(descriptor, "rb"));
        if (!stream) throw OperationError(name, "open", kTzFailed, std::strerror(errno));
        gzbuffer(stream.get(), kChunk);
        return InputFile::ofText(name, readAll(stream.get(), name));
    });
}

}  // namespace tzhost
