// Files that are written: they appear only when they are complete. Used by everything that writes a file.
#pragma once

#include <sys/types.h>

#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/io/PrivateFile.h"
#include "host/io/UnfinishedFiles.h"

namespace tzhost {

// File names cross the module boundary as UTF-8. Throws OperationError, of that step, when the name is not
// UTF-8.
void requireUtf8Name(const std::filesystem::path& file, std::string_view step);

// Removes what a process that crashed has left beside a file that it was writing.
void removeLeftBeside(const std::filesystem::path& target, pid_t process) noexcept;

// Written beside its final name, and renamed when it is complete. Whatever fails before that leaves the file
// of that name as it was, and nothing beside it.
class OutputFile {
  public:
    // Creates the file beside `target`. A target that is no regular file (a terminal, a pipe, /dev/null)
    // cannot be replaced and is written directly. Throws OperationError of the step `step`, as all operations
    // do.
    OutputFile(const std::filesystem::path& target, std::string step);

    // Standard output, which gets the whole when it is committed, and nothing otherwise.
    struct ToStandardOutput {};
    OutputFile(ToStandardOutput toStandardOutput, std::string step);

    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Appends. A failure (a full disk) is kept and thrown by complete() or commit(), so that this can be
    // called where nothing may be thrown.
    void write(std::string_view bytes) noexcept {
        if (bytes.size() > kBufferSize - used_) return writeLarge(bytes);
        std::memcpy(buffer_.data() + used_, bytes.data(), bytes.size());
        used_ += bytes.size();
    }

    // The name that the user gave.
    const std::string& name() const { return shown_; }

    // The name of the file as long as it is not committed, for writers that open it themselves.
    const std::string& temporaryName() const { return temporary_; }

    // Whether a write has failed: the rest need not be written.
    bool failed() const { return failure_ != 0; }

    // Writes out the buffer and closes the file; throws when that fails. For work that must also succeed
    // before the file appears: it comes between this and commit().
    void complete();

    // Makes it the file of the final name; completes it first.
    void commit();

  private:
    static constexpr size_t kBufferSize = size_t{1} << 16U;

    void writeLarge(std::string_view bytes) noexcept;
    void flush() noexcept;
    void discard() noexcept;
    void copyToStandardOutput() noexcept;
    void failIfFailed();
    [[noreturn]] void fail(int error) const;

    const std::string shown_;
    const std::string step_;
    std::string target_;
    std::string temporary_;
    std::optional<UnfinishedFile> unfinished_;  // notes temporary_
    std::optional<PrivateFile> held_;           // what standard output is to get
    bool direct_ = false;
    int descriptor_ = -1;
    int failure_ = 0;  // errno of the first failure
    std::vector<char> buffer_ = std::vector<char>(kBufferSize);
    size_t used_ = 0;  // of the buffer
};

}  // namespace tzhost
