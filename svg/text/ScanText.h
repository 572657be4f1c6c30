// sscanf that reads numbers with a decimal point whatever locale the host has set. Used where stored text has
// a scan format: view boxes and colours.
#pragma once

namespace tzsvg {

// As sscanf(text, format, ...), in the "C" locale: the number of items read. [any thread]
int scanText(const char* text, const char* format, ...) __attribute__((format(scanf, 2, 3)));

}  // namespace tzsvg
