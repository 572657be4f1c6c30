// The grid that all coordinates of a drawing are rounded to, and numbers as text.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>

namespace tznormalize {

// Numbers rounded to a number of decimals. Written without an exponent, trailing zeros or "-0".
// [trap: values under 1e-4 leave the export with an exponent and cannot come back]
class Grid {
  public:
    // 0 to 6 decimals.
    explicit Grid(int decimals);

    int decimals() const { return decimals_; }

    // The distance of its lines: 0.01 for two decimals.
    double step() const { return step_; }

    // As it reads back from append(); at most 1e9 away from 0. Not a number is 0.
    double round(double value) const { return at(linesTo(value)); }

    void append(std::string& out, double value) const;
    std::string text(double value) const;

    // The same in steps, for those who round, compare and write very many: how many of the grid's lines lie
    // between 0 and the value; what is rounded to a line; and its text, written into a buffer of kRoom
    // characters, with the text's end for an answer.
    int64_t linesTo(double value) const {
        if (!(std::abs(value) <= kFarthest))
            value = std::isnan(value) ? 0.0 : std::copysign(kFarthest, value);
        const double scaled = value * factor_;
        const auto whole = static_cast<int64_t>(scaled);
        const double rest = scaled - static_cast<double>(whole);  // as std::round() rounds it
        return whole + static_cast<int64_t>(rest >= 0.5) - static_cast<int64_t>(rest <= -0.5);
    }
    double at(int64_t line) const { return static_cast<double>(line) / factor_; }
    char* write(char* out, int64_t line) const;
    static constexpr size_t kRoom = 32;

  private:
    // [trap: the import's flip height is a whole number of 32 bits] What is further away than any drawing
    // reaches is brought nearer. Whole numbers of the grid's lines are exact up to there.
    static constexpr double kFarthest = 1e9;

    int decimals_;
    double factor_;
    double step_;
};

// A number with that many significant digits, without an exponent; for what is no coordinate. "0" for what is
// not finite.
std::string shortNumber(double value, int digits = 6);
void appendShortNumber(std::string& out, double value, int digits = 6);

}  // namespace tznormalize
