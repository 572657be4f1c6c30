// See the header.
#include "host/commands/Commands.h"

#include <cstdio>

#include "host/core/OperationError.h"

namespace tzhost {

void requirePrinted() {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        throw OperationError("standard output", "write", kTzFailed);
}

}  // namespace tzhost
