// The terminal as the host's observer: progress and messages go to stderr, log lines to the file of `--log`,
// and Ctrl-C cancels work within an InterruptScope (Interrupts.h). The program has one.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "host/core/Observer.h"

namespace tzhost {

class Terminal : public Observer {
  public:
    // A quiet one shows no progress, messages or notes.
    explicit Terminal(bool isQuiet = false);
    bool isQuiet() const { return isQuiet_; }

    // From here on it shows no progress: somebody else does.
    void hideProgress() { showsProgress_ = false; }

    // The file that the module's messages are about from here on; empty: none.
    void setSubject(const std::string& fileName);

    // Where the log's lines go, each with its line end; without a sink they are dropped. Set while no module
    // works.
    using LineSink = std::function<void(std::string_view line)>;
    void setLogSink(LineSink sink) { logSink_ = std::move(sink); }

    // On a terminal progress is a bar, elsewhere a line now and then, and nothing for work that is soon done.
    std::unique_ptr<Work> begin(const std::string& title) override;
    bool cancelled() noexcept override;
    void message(const std::string& text) override;
    void log(const LogLine& line) override;

    // Lines of the program's own, without their line ends.
    void note(const std::string& text) const;
    void warn(const std::string& text) const { note("warning: " + text); }

    // Takes away the bar that is shown, if any, before others print. It comes back at its next step.
    void clearBar() const;

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
    const bool isQuiet_;
    const bool isTerminal_;  // stderr
    bool showsProgress_ = true;
    int messagesHeld_ = 0;
    std::string subject_;
    LineSink logSink_;
};

// What has been printed has reached stdout: throws OperationError, step "write", when it has not.
void requirePrinted();

}  // namespace tzhost
