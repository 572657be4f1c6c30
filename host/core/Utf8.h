// UTF-8: checks of text that comes in, and text that goes out on one line. Called by the services, the scene
// file and the error messages.
#pragma once

#include <string>
#include <string_view>

#include "hostsdk/CTzText.h"

namespace tzhost {

// Whether the bytes are well-formed UTF-8: no surrogates, no overlong forms, nothing above U+10FFFF.
bool isUtf8(std::string_view text);

// The text with every invalid byte replaced by U+FFFD.
std::string toUtf8(std::string_view text);

// The text fit for one line of a message: UTF-8, control characters as "\x0A", and at most `limit` bytes.
std::string toOneLine(std::string_view text, size_t limit = 400);

// Text that a module handed in: throws kTzInvalidArgument when it is null with a size, or not UTF-8.
std::string_view checkedText(TzText text);

// Hands a text to a module's sink; throws its code, or kTzInvalidArgument when there is no function to call.
void writeTo(TzTextSink sink, std::string_view text);

}  // namespace tzhost
