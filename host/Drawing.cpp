#include "host/Drawing.h"

#include <mutex>

#include "host/core/OperationError.h"
#include "host/io/FileState.h"
#include "host/io/PrivateFile.h"

namespace tzhost {

class Drawing::NormalizedCopy {
  public:
    // The state is taken before the file is read: a change in between is found by the next refresh().
    NormalizedCopy(const InputFile& file, Purpose purpose)
        : file_(file),
          purpose_(purpose),
          state_(FileState::of(file)),
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
        const FileState state = FileState::of(file_);
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
