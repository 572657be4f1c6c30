// Work in a process of its own: what it measures starts from a fresh memory, and its peak of memory is its
// own. The program itself loads no module and holds no document, so that every child starts alike.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tzbench {

// Runs the work in a child process; the numbers that it returns. Throws std::runtime_error when the child
// fails.
std::vector<double> inChild(const std::function<std::vector<double>()>& work);

// What a program of its own took.
struct ProgramRun {
    double seconds;  // of processor time
    double peakMiB;
    double elapsed;  // seconds on the wall
};

// Runs a program without its output. Throws std::runtime_error when it fails.
ProgramRun runProgram(const std::vector<std::string>& command);

// The peak of this process's memory so far.
double peakMiB();

// Seconds of processor time that the work takes, on all its threads and in the system: what others do on the
// machine meanwhile does not count.
double secondsOf(const std::function<void()>& work);

}  // namespace tzbench
