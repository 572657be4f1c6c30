// Runs the program as a user does. For tests of the command line.
#pragma once

#include <sys/wait.h>

#include <cstdlib>
#include <string>

#include "tests/host/TestFolder.h"

namespace tzhost {

// Runs `tzhost ARGUMENTS` in the folder, through the shell; answers the exit status, -1 for an end by a
// signal. What it prints is left there in ".out" and ".err".
inline int runProgram(const TestFolder& folder, const std::string& arguments) {
    const std::string line =
        "cd '" + (folder / "").native() + "' && exec >.out 2>.err && '" TZHOST_PROGRAM "' " + arguments;
    const int status = std::system(line.c_str());  // NOLINT(cert-env33-c,concurrency-mt-unsafe)
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace tzhost
