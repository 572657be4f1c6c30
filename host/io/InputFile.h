// Looks at an input file before a module is asked about it: a file that is missing is not one that nobody
// recognises. Called by everything that reads a file.
#pragma once

#include <filesystem>
#include <string_view>

namespace tzhost {

// Throws OperationError, step "open", when the file is missing, a folder, or not readable.
void requireReadable(const std::filesystem::path& file);

// Text that crosses the boundary is UTF-8; a mangled name would be that of another file. Throws
// OperationError when the name is not, of that step.
void requireUtf8Name(const std::filesystem::path& file, std::string_view step);

}  // namespace tzhost
