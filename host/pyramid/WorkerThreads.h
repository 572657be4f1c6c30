// Runs one function on several threads. Used by the commands that take `--threads`.
#pragma once

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
                threads_.emplace_back(work, i);
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
    std::vector<std::thread> threads_;
};

}  // namespace tzhost
