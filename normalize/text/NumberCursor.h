// Numbers out of attribute text, as renderers read them: signs, exponents, numbers that follow one another
// without a blank (".5.5", "1-2"). Used by all readers of this folder.
#pragma once

#include <QString>  // Qt 5.15 compares views there
#include <QStringView>
#include <optional>
#include <vector>

namespace tznormalize {

// White space of attribute text. Not QChar::isSpace(): a no-break space is none.
inline bool isBlank(char16_t c) {
    return c == u' ' || c == u'\n' || c == u'\t' || c == u'\r' || c == u'\f';
}

// Walks over a text from number to number. The text must outlive it.
class NumberCursor {
  public:
    explicit NumberCursor(QStringView text) : at_(text.utf16()), end_(at_ + text.size()) {}

    bool atEnd() const { return at_ == end_; }
    char16_t peek() const { return at_ == end_ ? u'\0' : *at_; }
    void next() { ++at_; }  // not at the end
    QStringView rest() const { return {at_, end_}; }

    void skipBlanks() {
        while (at_ != end_ && isBlank(*at_)) ++at_;
    }

    // Blanks with at most one comma among them; whether there was a comma.
    bool skipSeparator();

    // The number that begins here; false, with nothing skipped, when none does. Never infinite: a number too
    // large to hold is none.
    bool readNumber(double& value);

    // A flag of an arc: one digit, "0" or "1", which the next number may follow at once.
    bool readFlag(bool& value);

  private:
    const char16_t* at_;
    const char16_t* const end_;
};

// The numbers of a list, separated by blanks and commas, up to the first fault.
std::vector<double> readNumbers(QStringView text);

// The number that the whole text is but for blanks around it.
std::optional<double> readNumber(QStringView text);

// A number, or a percentage of 1 ("40%" is 0.4): offsets, opacities, shares of a box.
std::optional<double> readShare(QStringView text);

// An opacity from 0 to 1; text that is none counts as 1.
double readOpacity(QStringView text);

}  // namespace tznormalize
