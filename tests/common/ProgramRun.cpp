#include "tests/common/ProgramRun.h"

#include <fnmatch.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <map>
#include <sstream>

#include "tests/common/Table.h"

int tzhost::runProgram(const TestFolder& folder, const std::string& arguments) {
    return runLine(folder, "\"$tzhost\" " + arguments);
}

int tzhost::runLine(const TestFolder& folder, const std::string& line) {
    const std::string script = "tzhost='" TZHOST_PROGRAM "'; cd '" + (folder / "").native() +
                               "' || exit; exec >.out 2>.err; " + line;
    const int status = std::system(script.c_str());  // NOLINT(cert-env33-c,concurrency-mt-unsafe)
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void tzhost::expectRefusals(const TestFolder& folder, const std::string& table, const std::string& options) {
    const auto contents = [&] {
        std::map<std::string, std::string> all;
        for (const std::string& name : folder.names())
            all[name] = std::filesystem::is_directory(folder / name) ? "" : folder.read(name);
        return all;
    };
    const auto before = contents();
    for (const auto& row : readTable(table, 3)) {
        SCOPED_TRACE(row[0]);
        EXPECT_EQ(std::stoi(row[1]), runProgram(folder, options + row[0]));
        std::istringstream lines(folder.read(".err"));
        std::vector<std::string> errors;
        for (std::string line; std::getline(lines, line);) {
            if (line.rfind("warning: ", 0) != 0) errors.push_back(line);
        }
        EXPECT_EQ(1U, errors.size());
        const std::string error = errors.empty() ? "" : errors[0];
        EXPECT_EQ(0, fnmatch(("tzhost: " + row[2]).c_str(), error.c_str(), 0)) << error;
        EXPECT_EQ("", folder.read(".out"));
        std::filesystem::remove(folder / ".err");
        std::filesystem::remove(folder / ".out");
        EXPECT_EQ(before, contents());
    }
}
