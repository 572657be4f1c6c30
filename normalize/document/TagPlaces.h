// Where tags stand in a text. The line and column of Qt's reader are those of where it has read to, which is
// behind the tag, and off by one on all lines but the first.
#pragma once

#include <QStringView>
#include <QXmlStreamReader>
#include <algorithm>

#include "svg/tree/PlainXmlReader.h"

namespace tznormalize {

// Asked for one tag after the other, in the order of the text.
class TagPlaces {
  public:
    explicit TagPlaces(QStringView text) : text_(text), lineEnd_(text.indexOf(u'\n')) {}

    // Moves on to the start tag that the reader has read. A tag that an entity brought stays where the last
    // one stood.
    void moveTo(const QXmlStreamReader& reader) { moveBefore(reader.characterOffset()); }
    void moveTo(const tzsvg::PlainXmlReader& reader) { moveTo(reader.tagOffset()); }

    // Moves on to the last tag that begins before `end`.
    void moveBefore(qint64 end) {
        const auto last = std::min<qsizetype>(qsizetype(end), text_.size()) - 1;
        moveTo(text_.lastIndexOf(u'<', last));
    }

    // Counted from 1.
    qint64 line() const { return line_; }
    qint64 column() const { return column_; }

  private:
    void moveTo(qsizetype position) {
        while (lineEnd_ >= 0 && lineEnd_ < position) {
            ++line_;
            lineStart_ = lineEnd_ + 1;
            lineEnd_ = text_.indexOf(u'\n', lineStart_);
        }
        if (position >= lineStart_) column_ = position - lineStart_ + 1;
    }

    const QStringView text_;
    qsizetype lineStart_ = 0;
    qsizetype lineEnd_;  // -1 in the last line
    qint64 line_ = 1;
    qint64 column_ = 1;
};

}  // namespace tznormalize
