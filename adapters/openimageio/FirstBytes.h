// Whether a file may be a drawing, by its first bytes alone. Asked for files of every kind: a file that its
// own reader has refused is offered to all others.
#pragma once

#include <string>
#include <string_view>

namespace tzoiio {

// The beginning of a file; empty when it cannot be read. Files other than regular ones are not opened.
std::string readFirstBytes(const std::string& file);

// Whether the bytes, plain or packed by gzip, are those of an XML document with an svg element at its root.
bool looksLikeSvg(std::string_view firstBytes);

}  // namespace tzoiio
