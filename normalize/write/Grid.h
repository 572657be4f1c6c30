// The grid that all coordinates of a drawing are rounded to, and numbers as text.
#pragma once

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

    // As it reads back from append(); at most 1e9 away from 0.
    double round(double value) const;

    void append(std::string& out, double value) const;
    std::string text(double value) const;

  private:
    int decimals_;
    double factor_;
    double step_;
};

// A number with that many significant digits, without an exponent; for what is no coordinate. "0" for what is
// not finite.
std::string shortNumber(double value, int digits = 6);
void appendShortNumber(std::string& out, double value, int digits = 6);

}  // namespace tznormalize
