// How the host speaks to the program that uses it: the progress of long work, messages for the user, the log;
// and how the program cancels work. The host itself prints nothing and handles no signals. A program derives
// from Observer what it wants to know and gives it to its Host; the base class is one that ignores
// everything.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tzhost {

// What a module opened in the log; its lines refer to it.
struct LogEntry {
    std::string formatName;
    std::string version;
    std::string description;  // empty: none
    std::string subsystem;    // empty: the host's default
};

struct LogLine {
    const LogEntry& entry;
    std::string_view heading;
    std::string_view text;  // ends with a line end
};

class Observer {
  public:
    Observer() = default;
    virtual ~Observer() = default;
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;

    // Work that has begun; destroyed when it has ended, whether or not it succeeded.
    class Work {
      public:
        virtual ~Work() = default;
        // `done` of `count` steps are done; a count of 0 is unknown. Called for the first step and then now
        // and then, on the thread that does the work.
        virtual void update(uint64_t done, uint64_t count) noexcept = 0;
    };

    // Work that may take long begins. `title` says what is done ("saving a.svg"). Null: its progress is of no
    // interest. Works may nest. Called on the thread that does the work.
    virtual std::unique_ptr<Work> begin(const std::string& /*title*/) { return nullptr; }

    // Whether the user wants the current work to stop. Asked for every step of an import and for every
    // element that is written, on any thread: cheap. Once it has answered true for some work it goes on to do
    // so.
    virtual bool cancelled() noexcept { return false; }

    // A message of a module for the user: one line, without a line end. Called on the host thread.
    virtual void message(const std::string& /*text*/) {}

    // A line for the log. Called on any thread, but never on two at once by the same host.
    virtual void log(const LogLine& /*line*/) {}
};

// Counts the steps of long work and tells the observer now and then. The host has one around every piece of
// work that can take long.
class Progress {
  public:
    // The title is for Observer::begin(). As long as no step is made, the observer is told no more than that.
    Progress(Observer& observer, const std::string& title, uint64_t count = 0)
        : work_(observer.begin(title)), count_(count) {}
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void setCount(uint64_t count) noexcept { count_ = count; }

    // Cheap enough for every point and polygon.
    void step(uint64_t steps = 1) noexcept {
        done_ += steps;
        if (--stepsUntilUpdate_ == 0) update();
    }

    // Tells the observer now. Called after steps that are few and long.
    void update() noexcept {
        stepsUntilUpdate_ = kStepsPerUpdate;
        if (work_) work_->update(done_, count_);
    }

    // The work has ended.
    void close() noexcept { work_.reset(); }

  private:
    static constexpr uint32_t kStepsPerUpdate = 256;

    std::unique_ptr<Observer::Work> work_;
    uint64_t count_;
    uint64_t done_ = 0;
    uint32_t stepsUntilUpdate_ = 1;
};

}  // namespace tzhost
