// Runs one function on several threads. Used by the commands that take `--threads`.
#pragma once

#include <sched.h>

#include <functional>
#include <system_error>
#include <thread>
#include <vector>

namespace tzhost {

// Each thread runs `work(index)`, index counting from 0. The destructor joins them. `work` must not throw.
// When the system cannot start all threads, the highest indices are left out, but never index 0.
class WorkerThreads {
  public:
    WorkerThreads(uint32_t count, const std::function<void(uint32_t)>& work) {
        threads_.reserve(count);
        for (uint32_t i = 0; i < count; ++i) {
            try {
                threads_.emplace_back([work, i] {
                    workInBulk();
                    work(i);
                });
            } catch (const std::system_error&) {
                if (i == 0) throw;
                return;
            }
        }
    }
    WorkerThreads(const WorkerThreads&) = delete;
    WorkerThreads& operator=(const WorkerThreads&) = delete;
    ~WorkerThreads() { join(); }

    void join() {
        for (std::thread& thread : threads_) thread.join();
        threads_.clear();
    }

  private:
    // A thread that is woken waits for its turn, instead of interrupting the one that woke it; so do the
    // threads that it starts. Qt hands parts of a gradient to other threads, for microseconds, and waits: a
    // pyramid of gradients takes three quarters of the time so. Where the system does not allow it, nothing
    // is lost.
    static void workInBulk() {
        const sched_param none{};
        static_cast<void>(sched_setscheduler(0, SCHED_BATCH, &none));
    }

    std::vector<std::thread> threads_;
};

}  // namespace tzhost
