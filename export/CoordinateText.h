// Coordinate pairs as text. Used by the polygon and path writers for every coordinate.
#pragma once

#include <string_view>
#include <vector>

#include "svg/text/RealText.h"

namespace tzsvg {

// A growing list of coordinate pairs: "10.5,20 ", with a space behind each pair. Used again for one polygon
// after the other, so that its memory is allocated once.
class CoordinateText {
  public:
    void clear() { used_ = 0; }
    std::string_view view() const { return {room_.data(), used_}; }

    void append(char character);

    // Appends a pair of numbers as realText() gives them.
    void appendPair(double x, double y);

    // The same digits in plain decimal, never with an exponent: "1000000,0.00001 ". For path data: its reader
    // knows no exponents, and what the saver writes must be able to come back in.
    void appendPlainPair(double x, double y);

  private:
    char* makeRoom(size_t size);
    bool appendFast(double x, double y);
    void append(std::string_view text);

    std::vector<char> room_;
    size_t used_ = 0;
};

}  // namespace tzsvg
