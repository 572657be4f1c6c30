// Readers of attribute text, as far as a preview needs them: numbers, lengths, transforms, references,
// styles. Used by all of this folder. Text that does not read as what is asked for gives nothing; nothing
// throws.
#pragma once

#include <QString>
#include <QTransform>
#include <optional>
#include <vector>

namespace tzhost {

// The number that a text starts with: "2.5px" is 2.5.
std::optional<double> leadingNumber(const QString& text);

// A fraction: "0.5", or "50%" as its part of one.
std::optional<double> readFraction(const QString& text);

// An opacity from 0 to 1; text that is none counts as 1.
double readOpacity(const QString& text);

// The numbers of a list, separated by blanks and commas, up to the first fault. At most `most`.
std::vector<double> readNumbers(const QString& text, size_t most);

// A list of transform functions; the identity for text that is none, and for one that is not finite.
QTransform readTransform(const QString& text);

// The id that "url(#id)" refers to; empty for other text.
QString readReference(const QString& text);

// The value of a property in the text of a `style` attribute; empty when it is not there.
QString styleProperty(const QString& style, const char* name);

}  // namespace tzhost
