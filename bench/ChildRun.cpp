#include "bench/ChildRun.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <stdexcept>

namespace tzbench {
namespace {

double mebibytes(const rusage& usage) {
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

// Waits for a child that must end well.
rusage waitFor(pid_t child, const char* what) {
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child || status != 0) {
        throw std::runtime_error(std::string(what) + " failed");
    }
    return usage;
}

pid_t forkOrThrow() {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("fork failed");
    return child;
}

[[noreturn]] void runAndReport(const std::function<std::vector<double>()>& work, int report) {
    int code = EXIT_FAILURE;
    try {
        const std::vector<double> numbers = work();
        const auto size = static_cast<ssize_t>(numbers.size() * sizeof(double));
        if (write(report, numbers.data(), static_cast<size_t>(size)) == size) code = EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    _exit(code);  // what the child has from its parent is not its to tidy up
}

}  // namespace

std::vector<double> inChild(const std::function<std::vector<double>()>& work) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("pipe failed");
    const pid_t child = forkOrThrow();
    if (child == 0) runAndReport(work, ends[1]);
    close(ends[1]);
    std::vector<double> numbers;
    for (double number = 0; read(ends[0], &number, sizeof number) == sizeof number;)
        numbers.push_back(number);
    close(ends[0]);
    waitFor(child, "measured work");
    return numbers;
}

ProgramRun runProgram(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    const auto began = std::chrono::steady_clock::now();
    const pid_t child = forkOrThrow();
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        execvp(arguments[0], arguments.data());
        _exit(EXIT_FAILURE);
    }
    const rusage usage = waitFor(child, command[0].c_str());
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - began;
    return {seconds(usage.ru_utime) + seconds(usage.ru_stime), mebibytes(usage), elapsed.count()};
}

double peakMiB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return mebibytes(usage);
}

double secondsOf(const std::function<void()>& work) {
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
    };
    const double began = now();
    work();
    return now() - began;
}

}  // namespace tzbench
