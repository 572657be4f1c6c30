#include "host/batch/Workers.h"

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <system_error>
#include <utility>
#include <vector>

#include "host/commands/Interrupts.h"

namespace tzhost {
namespace {

[[noreturn]] void fail(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {
        if (number_ < 0) fail("no file in memory");
    }
    ~Descriptor() { close(number_); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return number_; }

  private:
    int number_;
};

// A file in memory that a worker writes to and this process reads, both at the same place of it.
class PrintedText {
  public:
    PrintedText() : file_(memfd_create("printed", MFD_CLOEXEC)) {}
    int get() const { return file_.get(); }

    // While the worker waits, or when it has ended.
    std::string take() const {
        struct stat status {};
        if (fstat(get(), &status) != 0 || status.st_size == 0) return {};
        std::string text(static_cast<size_t>(status.st_size), '\0');
        const ssize_t count = pread(get(), text.data(), text.size(), 0);
        text.resize(static_cast<size_t>(std::max(count, ssize_t{0})));
        if (ftruncate(get(), 0) != 0) fail("ftruncate");
        lseek(get(), 0, SEEK_SET);
        return text;
    }

  private:
    Descriptor file_;
};

// Two ends of a line: what is sent at one is received at the other.
class Line {
  public:
    Line() {
        if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends_) != 0) fail("socketpair");
    }
    ~Line() {
        hangUp(0);
        hangUp(1);
    }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    int end(int number) const { return ends_[number]; }
    void hangUp(int number) {
        if (ends_[number] >= 0) close(std::exchange(ends_[number], -1));
    }

  private:
    int ends_[2] = {-1, -1};
};

template <class Value>
bool get(int socket, Value& value) {
    ssize_t count = 0;
    do {
        count = read(socket, &value, sizeof value);
    } while (count < 0 && errno == EINTR);
    return count == static_cast<ssize_t>(sizeof value);
}

template <class Value>
bool put(int socket, const Value& value) {
    return send(socket, &value, sizeof value, MSG_NOSIGNAL) == static_cast<ssize_t>(sizeof value);
}

// In the worker: a job's number comes, its status goes, until no more come.
void work(int socket, const std::function<RunJob()>& begin) {
    const RunJob run = begin();
    for (size_t job = 0; get(socket, job) && interruptSignal() == 0;) {
        const auto status = static_cast<uint8_t>(run(job));
        std::fflush(stdout);
        if (!put(socket, status)) return;
    }
}

class Worker;
using Workers = std::vector<std::unique_ptr<Worker>>;

class Worker {
  public:
    // `others` are those that this process has.
    Worker(const std::function<RunJob()>& begin, const Workers& others) {
        fork(begin, others);
        line_.hangUp(kItsEnd);
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    int socket() const { return line_.end(kOurEnd); }
    size_t job() const { return job_; }

    void start(size_t job) {
        job_ = job;
        put(socket(), job);  // a worker that is gone is found when it does not answer
    }

    // What became of its job, once there is something to be heard of it.
    JobResult result() {
        JobResult result;
        uint8_t status = 0;
        result.process = process_;
        result.isAnswered = get(socket(), status);
        if (result.isAnswered) {
            result.status = status;
        } else {
            result.endSignal = join();
        }
        result.out = out_.take();
        result.err = err_.take();
        return result;
    }

    // There are no more jobs for it: it ends by itself.
    void retire() const { shutdown(socket(), SHUT_WR); }
    void interrupt() const {
        if (process_ > 0) kill(process_, SIGINT);
    }

    // Waits for its end; answers the signal that ended it, or 0.
    int join() {
        int status = 0;
        if (process_ == 0) return 0;
        while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
        }
        process_ = 0;
        return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    }

    // What it had to say when it ended.
    std::string lastWords() const { return err_.take(); }

  private:
    static constexpr int kOurEnd = 0;
    static constexpr int kItsEnd = 1;

    void fork(const std::function<RunJob()>& begin, const Workers& others) {
        std::fflush(stdout);
        process_ = ::fork();
        if (process_ < 0) fail("no worker process");
        if (process_ > 0) return;
        // With the others' sockets open here, they would not notice that this program is gone.
        for (const auto& other : others) {
            if (other) close(other->socket());
        }
        line_.hangUp(kOurEnd);
        dup2(out_.get(), STDOUT_FILENO);
        dup2(err_.get(), STDERR_FILENO);
        try {
            work(line_.end(kItsEnd), begin);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "tzhost: %s\n", error.what());
        }
        std::fflush(stdout);
        // It never returns: what is on the stack is the other process's to destroy.
        _exit(0);
    }

    PrintedText out_;
    PrintedText err_;
    Line line_;
    pid_t process_ = 0;  // 0: it has been waited for
    size_t job_ = 0;
};

// Waits until one of them can be heard. Null: an interrupt came.
std::unique_ptr<Worker>* nextHeard(Workers& workers) {
    std::vector<pollfd> waited;
    for (const auto& worker : workers) waited.push_back({worker->socket(), POLLIN, 0});
    while (interruptSignal() == 0) {
        if (poll(waited.data(), waited.size(), -1) <= 0) continue;
        for (size_t i = 0; i < waited.size(); ++i) {
            if (waited[i].revents != 0) return &workers[i];
        }
    }
    return nullptr;
}

}  // namespace

unsigned usableProcessors() {
    cpu_set_t set;
    return sched_getaffinity(0, sizeof set, &set) == 0 ? static_cast<unsigned>(CPU_COUNT(&set)) : 1;
}

void runInProcesses(size_t count, unsigned processes, const std::function<RunJob()>& begin,
                    const std::function<bool(size_t job, JobResult& result)>& done) {
    Workers workers;
    Workers retired;
    size_t next = 0;
    while (next < std::min<size_t>(count, processes)) {
        try {
            workers.push_back(std::make_unique<Worker>(begin, workers));
        } catch (const std::system_error&) {
            if (workers.empty()) throw;
            break;  // the machine gives no more: those that there are do the work
        }
        workers.back()->start(next++);
    }
    while (!workers.empty()) {
        std::unique_ptr<Worker>* const heard = nextHeard(workers);
        if (!heard) break;
        JobResult result = (*heard)->result();
        const bool isAlive = result.isAnswered;
        if (!done((*heard)->job(), result)) break;
        if (next < count) {
            if (!isAlive) *heard = std::make_unique<Worker>(begin, workers);
            (*heard)->start(next++);
        } else {
            (*heard)->retire();
            retired.push_back(std::move(*heard));
            workers.erase(workers.begin() + (heard - workers.data()));
        }
    }
    for (const auto& worker : workers) {
        worker->interrupt();
        worker->retire();
    }
    for (const auto& worker : workers) worker->join();
    for (const auto& worker : retired) {
        worker->join();
        std::fputs(worker->lastWords().c_str(), stderr);
    }
}

}  // namespace tzhost
