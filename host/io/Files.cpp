#include "host/io/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <utility>

#include "host/core/OperationError.h"
#include "host/core/Utf8.h"

namespace tzhost {
namespace {

constexpr mode_t kNewFileMode = 0666;  // less the umask
constexpr int kAttempts = 100;
constexpr size_t kLongestExtension = 16;

// How the temporary names of a process begin.
std::string temporaryPrefix(pid_t process) {
    return ".tzhost-" + std::to_string(process) + "-";
}

// A short name in the target's folder that this process uses once. It keeps the extension, which savers may
// look at.
std::string temporaryBeside(const std::filesystem::path& target) {
    static std::atomic<uint32_t> made{0};
    std::string extension = target.extension().native();
    if (extension.size() > kLongestExtension) extension.clear();
    const std::string name = temporaryPrefix(getpid()) + std::to_string(made++) + extension;
    return (target.parent_path() / name).native();
}

}  // namespace

void requireUtf8Name(const std::filesystem::path& file, std::string_view step) {
    if (!isUtf8(file.native()))
        throw OperationError(file.native(), step, kTzInvalidArgument, "the name is not UTF-8");
}

void removeLeftBeside(const std::filesystem::path& target, pid_t process) noexcept {
    tzGate([&] {
        const std::string prefix = temporaryPrefix(process);
        const std::filesystem::path folder = std::filesystem::absolute(target).parent_path();
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().filename().native().rfind(prefix, 0) == 0) std::filesystem::remove(entry.path());
        }
    });
}

OutputFile::OutputFile(const std::filesystem::path& target, std::string step)
    : shown_(target.native()), step_(std::move(step)) {
    // What a symbolic link leads to is replaced, not the link.
    std::error_code error;
    std::filesystem::path resolved = std::filesystem::weakly_canonical(target, error);
    if (error) resolved = std::filesystem::absolute(target);
    target_ = resolved.native();

    struct stat present {};
    const bool exists = stat(target_.c_str(), &present) == 0;
    if (exists && S_ISDIR(present.st_mode)) fail(EISDIR);
    // Names under /dev can stand for open regular files (/dev/stdout), which must not be replaced.
    direct_ = exists && (!S_ISREG(present.st_mode) || shown_.rfind("/dev/", 0) == 0);
    if (direct_) {
        temporary_ = shown_;
        descriptor_ = open(temporary_.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
        if (descriptor_ < 0) fail(errno);
        return;
    }
    for (int attempt = 0; descriptor_ < 0; ++attempt) {
        unfinished_.reset();
        temporary_ = temporaryBeside(resolved);
        unfinished_.emplace(temporary_);
        descriptor_ = open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode);
        if (descriptor_ < 0 && (errno != EEXIST || attempt == kAttempts)) fail(errno);
    }
    if (exists) fchmod(descriptor_, present.st_mode & 0777U);
}

OutputFile::OutputFile(ToStandardOutput /*toStandardOutput*/, std::string step)
    : shown_("standard output"), step_(std::move(step)) {
    inStep(shown_, step_, [&] { held_.emplace(""); });
    temporary_ = held_->name();
    direct_ = true;
    descriptor_ = open(temporary_.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    if (descriptor_ < 0) fail(errno);
}

OutputFile::~OutputFile() {
    discard();
}

void OutputFile::writeLarge(std::string_view bytes) noexcept {
    while (!bytes.empty() && failure_ == 0) {
        if (used_ == kBufferSize) flush();
        const size_t taken = std::min(bytes.size(), kBufferSize - used_);
        std::memcpy(buffer_.data() + used_, bytes.data(), taken);
        used_ += taken;
        bytes.remove_prefix(taken);
    }
}

void OutputFile::complete() {
    flush();
    if (descriptor_ >= 0 && close(std::exchange(descriptor_, -1)) != 0 && failure_ == 0) failure_ = errno;
    failIfFailed();
}

void OutputFile::commit() {
    complete();
    if (held_) {
        copyToStandardOutput();
    } else if (!direct_ && rename(temporary_.c_str(), target_.c_str()) != 0) {
        failure_ = errno;
    }
    failIfFailed();
    unfinished_.reset();
    temporary_.clear();
}

void OutputFile::failIfFailed() {
    if (failure_ == 0) return;
    discard();
    fail(failure_);
}

void OutputFile::flush() noexcept {
    size_t done = 0;
    while (done < used_ && failure_ == 0) {
        const ssize_t written = ::write(descriptor_, buffer_.data() + done, used_ - done);
        if (written >= 0) {
            done += static_cast<size_t>(written);
        } else if (errno != EINTR) {
            failure_ = errno;
        }
    }
    used_ = 0;
}

void OutputFile::copyToStandardOutput() noexcept {
    const int held = open(temporary_.c_str(), O_RDONLY | O_CLOEXEC);
    ssize_t count = held < 0 ? -1 : 1;
    descriptor_ = STDOUT_FILENO;
    while (count > 0 && failure_ == 0) {
        count = ::read(held, buffer_.data(), kBufferSize);
        used_ = static_cast<size_t>(std::max(count, ssize_t{0}));
        flush();
    }
    if (count < 0 && failure_ == 0) failure_ = errno;
    descriptor_ = -1;  // standard output stays open
    if (held >= 0) close(held);
}

void OutputFile::discard() noexcept {
    if (descriptor_ >= 0) close(std::exchange(descriptor_, -1));
    if (!direct_ && !temporary_.empty()) unlink(temporary_.c_str());
    unfinished_.reset();
    temporary_.clear();
}

void OutputFile::fail(int error) const {
    const TzResult code = error == ENOENT || error == ENOTDIR ? kTzNotFound
                          : error == ENOMEM                   ? kTzOutOfMemory
                                                              : kTzFailed;
    throw OperationError(shown_, step_, code, std::strerror(error));
}

}  // namespace tzhost
