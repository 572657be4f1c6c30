#include "host/Drawing.h"

#include <sys/stat.h>

#include <mutex>
#include <tuple>

#include "host/core/OperationError.h"
#include "host/io/PrivateFile.h"

namespace tzhost {
namespace {

// What differs when the file has changed; all zero when it does not exist.
using FileState = std::tuple<uint64_t, int64_t, int64_t, int64_t>;

FileState stateOf(const InputFile& file) {
    struct stat status {};
    if (stat(file.readName().c_str(), &status) != 0) return {};
    return {status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

}  // namespace

class Drawing::NormalizedCopy {
  public:
    // The state is taken before the file is read: a change in between is found by the next refresh().
    NormalizedCopy(const InputFile& file, Purpose purpose)
        : file_(file),
          purpose_(purpose),
          state_(stateOf(file)),
          text_(normalizeFile(file, purpose)),
          copy_(text_.document) {
        text_.document = {};
    }

    const std::string& name() const { return copy_.name(); }
    const NormalizedText& text() const { return text_; }

    void refresh() {
        // While another thread checks the file, this one uses the present copy.
        const std::unique_lock held(lock_, std::try_to_lock);
        if (!held) return;
        const FileState state = stateOf(file_);
        if (state == state_) return;
        state_ = state;
        tzGate([&] { copy_.replace(normalizeFile(file_, purpose_).document); });
    }

  private:
    const InputFile file_;
    const Purpose purpose_;
    std::mutex lock_;  // guards the state and the copy's content
    FileState state_;
    NormalizedText text_;
    PrivateFile copy_;
};

Drawing Drawing::normalized(const InputFile& file, Purpose purpose) {
    Drawing drawing(file);
    inStep(file.name(), "normalize",
           [&] { drawing.copy_ = std::make_shared<NormalizedCopy>(file, purpose); });
    return drawing;
}

const std::string& Drawing::readName() const {
    return copy_ ? copy_->name() : file_.readName();
}

const NormalizedText* Drawing::normalization() const {
    return copy_ ? &copy_->text() : nullptr;
}

void Drawing::refresh() const {
    if (copy_) copy_->refresh();
}

}  // namespace tzhost
