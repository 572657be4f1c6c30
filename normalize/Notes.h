// What a normalization changed, approximated or left out: one note for each element and thing.
#pragma once

#include <QString>
#include <cstdint>
#include <set>
#include <tuple>
#include <vector>

namespace tznormalize {

class SourceElement;

enum class NoteCode {
    kLeftOut,       // "left-out": it is not in the result
    kApproximated,  // "approximated": it looks nearly as it did
    kCarried,       // "carried": it looks as it did, but is another thing now
    kResolved,      // "resolved": the same, said in another way
};

const char* noteCodeText(NoteCode code);

struct Note {
    NoteCode code = NoteCode::kLeftOut;
    qint64 line = 0;  // of the element's start tag, counted from 1, as is the column
    qint64 column = 0;
    QString element;    // "text"
    QString id;         // the element's, may be empty
    QString attribute;  // may be empty
    QString text;       // "text became outlines of its fonts"
};

// In the order of the document's walk. An element that is met several times (by `use`) is noted once for each
// attribute and text. Bounded: of more than kMostNotes only the number is kept.
class Notes {
  public:
    static constexpr size_t kMostNotes = 10'000;

    void add(NoteCode code, const SourceElement& element, const QString& text,
             const QString& attribute = QString());

    const std::vector<Note>& list() const { return list_; }
    size_t leftOutOfList() const { return more_; }

    // For a pass that is made again: forgets what was noted after there were `count` notes, list().size()
    // then.
    void rewind(size_t count);

  private:
    using Key = std::tuple<uint32_t, NoteCode, QString, QString>;
    static Key keyOf(const Note& note, uint32_t index) {
        return {index, note.code, note.text, note.attribute};
    }

    std::vector<Note> list_;
    std::vector<uint32_t> elements_;  // of the list, by SourceElement::index()
    std::set<Key> keys_;              // of the list
    size_t more_ = 0;
};

}  // namespace tznormalize
