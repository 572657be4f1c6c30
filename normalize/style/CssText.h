// Walking over the text of a style sheet, comments taken out before: quoted texts and brackets as wholes.
#pragma once

#include <QString>
#include <QStringView>

namespace tznormalize {

// The text without its comments and the marks that once hid sheets from browsers ("<!--", "-->").
QString withoutComments(QStringView css);

// Where the text has the first of `ends`, from `from` on, outside of quotes and brackets; its size when it
// has none.
qsizetype findOutside(QStringView css, QStringView ends, qsizetype from = 0);

// Where the bracket that stands at `open` closes; the size of the text when it does not.
qsizetype closingOf(QStringView css, qsizetype open);

// What follows the character at `at`, if there is one.
inline QStringView behind(QStringView text, qsizetype at) {
    return at < text.size() ? text.mid(at + 1) : QStringView();
}

// Whether a character belongs to a name.
inline bool isNameCharacter(QChar c) {
    return c.isLetterOrNumber() || c == u'-' || c == u'_' || c == u'\\' || c.unicode() >= 0x80;
}

}  // namespace tznormalize
