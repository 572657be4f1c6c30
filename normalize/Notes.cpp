#include "normalize/Notes.h"

#include <utility>

#include "normalize/document/SourceElement.h"

namespace tznormalize {

const char* noteCodeText(NoteCode code) {
    switch (code) {
        case NoteCode::kApproximated:
            return "approximated";
        case NoteCode::kCarried:
            return "carried";
        case NoteCode::kResolved:
            return "resolved";
        case NoteCode::kLeftOut:
            break;
    }
    return "left-out";
}

void Notes::add(NoteCode code, const SourceElement& element, const QString& text, const QString& attribute) {
    if (list_.size() >= kMostNotes) {
        ++more_;
        return;
    }
    Note note{code,
              element.line(),
              element.column(),
              element.localName().toString(),
              element.id().toString(),
              attribute,
              text};
    if (!keys_.insert(keyOf(note, element.index())).second) return;
    list_.push_back(std::move(note));
    elements_.push_back(element.index());
}

void Notes::rewind(size_t count) {
    for (size_t i = count; i < list_.size(); ++i) keys_.erase(keyOf(list_[i], elements_[i]));
    list_.resize(count);
    elements_.resize(count);
    more_ = 0;
}

}  // namespace tznormalize
