// Runs the program as a user does. For tests of the command line.
#pragma once

#include <string>

#include "tests/common/TestFolder.h"

namespace tzhost {

// Runs `tzhost ARGUMENTS` in the folder, through the shell; answers the exit status, -1 for an end by a
// signal. What it prints is left there in ".out" and ".err".
int runProgram(const TestFolder& folder, const std::string& arguments);

// The same for a whole line of the shell, in which $tzhost stands for the program.
int runLine(const TestFolder& folder, const std::string& line);

// Runs each row of a table of commands: arguments, exit status, and a pattern of the shell for the one line
// on stderr besides warnings. Nothing else is printed, and the folder holds what it held before.
void expectRefusals(const TestFolder& folder, const std::string& table, const std::string& options = {});

}  // namespace tzhost
