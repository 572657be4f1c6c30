// Real numbers as text: six significant digits, as QTextStream and QString::number(value, 'g', 6) print them,
// at a fraction of their cost. Called by the polygon and path writers for every coordinate.
#pragma once

#include <string>

namespace tzsvg {

// Appends the number as the toolkit's streams print it by default: 10.5, 123457, 1e+06, 1e-05.
void appendReal(std::string& text, double value);

// Appends a pair of them as it stands in point lists: "10.5,20 ".
void appendPair(std::string& text, double x, double y);

// The same digits in plain decimal, never with an exponent: "1000000,0.00001 ". For path data: its reader
// knows no exponents, and what the saver writes must be able to come back in.
void appendPlainPair(std::string& text, double x, double y);

}  // namespace tzsvg
