// Real numbers as text: six significant digits, as QTextStream and QString::number(value, 'g', 6) print them,
// at a fraction of their cost. Used by the primitive tags of the import and by the export for every
// coordinate.
#pragma once

#include <cstddef>
#include <string>

namespace tzsvg {

// A number as Qt's streams print it by default: 10.5, 123457, 1e+06, 1e-05.
std::string realText(double value);

// The size of the buffer for writeReal(), which may write a few bytes more than the text has.
constexpr size_t kRealRoom = 24;

// Writes the same text into a buffer of kRealRoom characters; the answer is the end of the text. Null, with
// nothing written, for the few numbers that take realText().
char* writeReal(char* out, double value);

}  // namespace tzsvg
