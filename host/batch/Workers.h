// Jobs in processes of their own, several at a time: one that crashes takes no other with it, and libraries
// that work in one process only are loaded in each. Knows nothing of what the jobs are.
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <functional>
#include <string>

namespace tzhost {

struct JobResult {
    bool isAnswered = false;  // otherwise its process has ended before
    int status = 1;           // what the job answered
    int endSignal = 0;        // the signal that ended its process; 0: none
    pid_t process = 0;
    std::string out;  // what it printed on stdout
    std::string err;
};

// Runs a job in a worker; answers its status, 0 to 255.
using RunJob = std::function<int(size_t job)>;

// Runs the jobs 0 to `count` - 1 on that many processes. They are forked: this process must have no other
// threads. `begin` is called in each worker first, and the function that it returns is destroyed when no jobs
// are left. `done` is called here for each job, as they come; when it answers false, or at an interrupt
// (interruptSignal()), no further job is begun, and those that run are interrupted. Returns when all
// processes have ended. Throws std::system_error when there can be no process.
void runInProcesses(size_t count, unsigned processes, const std::function<RunJob()>& begin,
                    const std::function<bool(size_t job, JobResult& result)>& done);

// As many as there are processors that this process may use.
unsigned usableProcessors();

}  // namespace tzhost
