#include "host/io/Json.h"

#include <algorithm>
#include <cstring>

#include "hostsdk/CTzError.h"

namespace tzhost {
namespace {

// The number of line ends in a text, and the last one, or null. Lines are long: memchr() is faster than a
// loop.
struct LineEnds {
    size_t count = 0;
    const char* last = nullptr;
};
LineEnds lineEnds(const char* at, const char* end) {
    LineEnds found;
    while ((at = static_cast<const char*>(std::memchr(at, '\n', static_cast<size_t>(end - at))))) {
        ++found.count;
        found.last = at++;
    }
    return found;
}

}  // namespace

JsonFile::JsonFile(const std::filesystem::path& file, Progress& progress)
    : progress_(progress), buffer_(kChunkSize + 1), end_(buffer_.data()) {
    file_.pubsetbuf(nullptr, 0);
    if (!file_.open(file, std::ios::in | std::ios::binary)) throw CTzError(kTzFailed);
}

void JsonFile::readChunk() {
    const LineEnds passed = lineEnds(begin(), end());
    line_ += passed.count;
    if (passed.last) lineStart_ = offset_ + static_cast<size_t>(passed.last + 1 - begin());
    offset_ += static_cast<size_t>(end() - begin());

    const std::streamsize size = file_.sgetn(buffer_.data(), static_cast<std::streamsize>(kChunkSize));
    buffer_[static_cast<size_t>(size)] = '\0';
    end_ = begin() + size;
    progress_.step(static_cast<uint64_t>(size));
    progress_.update();
}

std::string JsonFile::place(size_t offset) const {
    const char* const at = begin() + (std::max(offset, offset_) - offset_);
    const LineEnds passed = lineEnds(begin(), at);
    const size_t column = passed.last ? static_cast<size_t>(at - passed.last)
                                      : offset_ + static_cast<size_t>(at - begin()) - lineStart_ + 1;
    return "line " + std::to_string(line_ + passed.count) + ", column " + std::to_string(column);
}

}  // namespace tzhost
