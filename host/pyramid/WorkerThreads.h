// Several threads at one piece of work. Used by the commands that take `--threads`.
#pragma once

#include <functional>
#include <system_error>
#include <thread>
#include <vector>

namespace tzhost {

// The threads that run `work(index)` each, index counting from 0; joined at the latest when it goes. `work`
// must not throw. Where the system gives fewer threads, the rest of the indices are left out, but never the
// first.
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
