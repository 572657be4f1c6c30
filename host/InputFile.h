// Looks at an input file before a module is asked about it: a file that is missing is not one that nobody
// recognises. Called by everything that reads a file.
#pragma once

#include <filesystem>

namespace tzhost {

// Throws OperationError, step "open", when the file is missing, a folder, or not readable.
void requireReadable(const std::filesystem::path& file);

}  // namespace tzhost
