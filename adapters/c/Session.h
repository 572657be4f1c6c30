// A session: a host, its module, and the caller's callbacks while a function of theirs runs. Scenes and
// images share it.
#pragma once

#include <atomic>
#include <memory>
#include <thread>

#include "adapters/c/Guard.h"
#include "host/ModuleLibrary.h"
#include "host/core/Observer.h"

namespace tzh {

// Hands what the host tells to the callbacks of the function that is running, if there are any.
class CallbackObserver : public tzhost::Observer {
  public:
    std::unique_ptr<Work> begin(const std::string& title) override;
    bool cancelled() noexcept override { return stopped_.load(std::memory_order_relaxed) != 0; }
    void message(const std::string& text) override;
    void log(const tzhost::LogLine& line) override;

    // The callbacks are told from here on, until the object goes. One at a time, on the session thread.
    class Scope {
      public:
        Scope(CallbackObserver& observer, const TzhCallbacks* callbacks);
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

        // Throws Stopped when a callback has stopped the work.
        void check() const;

      private:
        CallbackObserver& observer_;
    };

  private:
    class Told;
    bool isListening() const { return std::this_thread::get_id() == thread_.load(); }
    void answered(int32_t value);

    TzhCallbacks callbacks_{};
    std::atomic<std::thread::id> thread_{};  // that of the function that is running; none: nobody listens
    std::atomic<int32_t> stopped_{0};
};

struct SessionState {
    explicit SessionState(const std::string& module)
        : observer(std::make_shared<CallbackObserver>()), session(module, observer) {}

    // Throws when called on another thread than the session's.
    void requireThread() const;

    const std::shared_ptr<CallbackObserver> observer;
    tzhost::Session session;
    const std::thread::id thread = std::this_thread::get_id();
};

// Runs work that the caller wants to follow. A callback's stop comes out as its value, whatever the work made
// of it.
template <class Work>
void followed(SessionState& state, const TzhCallbacks* callbacks, Work&& work) {
    state.requireThread();
    const CallbackObserver::Scope scope(*state.observer, callbacks);
    try {
        work();
    } catch (...) {
        scope.check();
        throw;
    }
    scope.check();
}

}  // namespace tzh

struct TzhSession {
    std::shared_ptr<tzh::SessionState> state;
};
