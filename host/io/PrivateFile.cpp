#include "host/io/PrivateFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace tzhost {
namespace {

[[noreturn]] void fail() {
    throw std::system_error(errno, std::generic_category(), "no file in memory");
}

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return number_; }
    int release() { return std::exchange(number_, -1); }

  private:
    int number_;
};

// A file in memory with that content.
int makeFile(std::string_view content) {
    Descriptor file(memfd_create("drawing", MFD_CLOEXEC));
    if (file.get() < 0) fail();
    while (!content.empty()) {
        const ssize_t written = write(file.get(), content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) fail();
        content.remove_prefix(static_cast<size_t>(written));
    }
    return file.release();
}

}  // namespace

PrivateFile::PrivateFile(std::string_view content)
    : descriptor_(makeFile(content)), name_("/proc/self/fd/" + std::to_string(descriptor_)) {}

PrivateFile::~PrivateFile() {
    close(descriptor_);
}

void PrivateFile::replace(std::string_view content) {
    const Descriptor file(makeFile(content));
    if (dup3(file.get(), descriptor_, O_CLOEXEC) < 0) fail();
}

}  // namespace tzhost
