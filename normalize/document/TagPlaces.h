// Where tags stand in a text. The reader's own line and column are those of where it has read to, which is
// behind the tag, and off by one on all lines but the first.
#pragma once

#include <QString>
#include <algorithm>

namespace tznormalize {

// Asked for one tag after the other, in the order of the text.
class TagPlaces {
  public:
    explicit TagPlaces(const QString& text) : text_(text) {}

    // Moves on to the "<" of the tag that ends at `end`. A tag that an entity brought stays where the last
    // one stood.
    void moveTo(qint64 end) {
        const auto last = std::min<qint64>(end, text_.size()) - 1;
        const auto position = text_.lastIndexOf(u'<', static_cast<int>(last));
        for (; counted_ < position; ++counted_) {
            if (text_.at(counted_) != u'\n') continue;
            ++line_;
            lineStart_ = counted_ + 1;
        }
        if (position >= lineStart_) column_ = position - lineStart_ + 1;
    }

    // Counted from 1.
    qint64 line() const { return line_; }
    qint64 column() const { return column_; }

  private:
    const QString& text_;
    decltype(text_.size()) counted_ = 0;
    decltype(text_.size()) lineStart_ = 0;
    qint64 line_ = 1;
    qint64 column_ = 1;
};

}  // namespace tznormalize
