// Tables of cases, kept in text files beside the tests.
#pragma once

#include <string>
#include <vector>

// The rows of a table: a line each, its cells apart by " | ". Empty lines and lines that begin with '#' are
// left out; \n, \t, \r, \\ and \xNN stand for what they do in C, \e for nothing. `file` is named from the
// folder of all tests. A table that is not there, or a row without that many cells, fails the test.
std::vector<std::vector<std::string>> readTable(const std::string& file, size_t cells);
