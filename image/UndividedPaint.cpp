#include "image/UndividedPaint.h"

#include <QRunnable>
#include <QThread>
#include <QThreadPool>
#include <climits>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

namespace tzsvg {
namespace {

class PaintTask : public QRunnable {
  public:
    explicit PaintTask(const std::function<void()>& paint) : paint_(paint) { setAutoDelete(false); }

    void runOn(QThreadPool& pool) {
        std::unique_lock held(lock);
        // Behind another paint it has its turn before anything else that is queued.
        if (running > 0) {
            pool.start(this, INT_MAX);
        } else if (!startsOn(pool)) {
            held.unlock();
            return paint_();
        }
        ++running;
        finished_.wait(held, [&] { return isDone_; });
        if (failure_) std::rethrow_exception(failure_);
    }

    void run() override {
        {  // The caller's writes, for the thread sanitizer, which does not see Qt's locks.
            const std::lock_guard held(lock);
        }
        try {
            paint_();
        } catch (...) {
            failure_ = std::current_exception();
        }
        const std::lock_guard held(lock);
        isDone_ = true;
        --running;
        finished_.notify_one();
    }

  private:
    // A thread that has just finished a paint may not have gone back to rest yet.
    bool startsOn(QThreadPool& pool) {
        constexpr int kTries = 20;
        for (int i = 0; i < kTries; ++i) {
            if (pool.tryStart(this)) return true;
            std::this_thread::yield();
        }
        return false;
    }

    static inline std::mutex lock;     // guards what follows, and every task's isDone_
    static inline size_t running = 0;  // or about to

    const std::function<void()>& paint_;
    std::exception_ptr failure_;
    bool isDone_ = false;
    std::condition_variable finished_;
};

}  // namespace

void paintUndivided(const std::function<void()>& paint) {
    QThreadPool* const pool = QThreadPool::globalInstance();
    if (!pool || pool->contains(QThread::currentThread())) return paint();
    PaintTask(paint).runOn(*pool);
}

}  // namespace tzsvg
