// The terminal as the host's observer: progress and messages go to stderr, log lines to the file of `--log`,
// and Ctrl-C cancels work within an InterruptScope. main() makes the only one.
#pragma once

#include <csignal>
#include <functional>
#include <string>
#include <string_view>

#include "host/core/Observer.h"

namespace tzhost {

class Terminal : public Observer {
  public:
    Terminal();

    // Where the log's lines go, each with its line end; without a sink they are dropped. Set while no module
    // works.
    using LineSink = std::function<void(std::string_view line)>;
    void setLogSink(LineSink sink) { logSink_ = std::move(sink); }

    // On a terminal progress is a bar, elsewhere a line now and then, and nothing for work that is soon done.
    std::unique_ptr<Work> begin(const std::string& title) override;
    bool cancelled() noexcept override;
    void message(const std::string& text) override;
    void log(const LogLine& line) override;

    // A line of the program's own, without its line end.
    void note(const std::string& text) const;

    // While one is alive the module's messages are not shown: they would come again for each of many
    // drawings.
    class MessagesHeld {
      public:
        explicit MessagesHeld(Terminal& terminal) : terminal_(terminal) { ++terminal_.messagesHeld_; }
        ~MessagesHeld() { --terminal_.messagesHeld_; }
        MessagesHeld(const MessagesHeld&) = delete;
        MessagesHeld& operator=(const MessagesHeld&) = delete;

      private:
        Terminal& terminal_;
    };

  private:
    int messagesHeld_ = 0;
    const bool isTerminal_;  // stderr
    LineSink logSink_;
};

// What has been printed has reached stdout: throws OperationError, step "write", when it has not.
void requirePrinted();

// While one exists, the first Ctrl-C makes Terminal::cancelled() return true, and the second ends the
// program. Otherwise the first one ends it. One at a time, on the main thread.
class InterruptScope {
  public:
    InterruptScope();
    ~InterruptScope();
    InterruptScope(const InterruptScope&) = delete;
    InterruptScope& operator=(const InterruptScope&) = delete;

  private:
    struct sigaction previous_ {};
};

}  // namespace tzhost
