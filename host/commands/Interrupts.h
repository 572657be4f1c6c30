// What ends the program from outside: Ctrl-C, and its like of a batch system or a closed terminal. Nothing
// that is half written is left behind, and the exit status tells: 128 and the signal, so 130 for Ctrl-C.
#pragma once

namespace tzhost {

// From now on signals are handled. Called once, by main().
void handleInterrupts();

// The signal that has come; 0: none. Work that it made fail ends with exitStatusOf() it.
int interruptSignal() noexcept;
constexpr int exitStatusOf(int signal) {
    return 128 + signal;
}

// While one exists, the first Ctrl-C only makes interruptSignal() tell, so that the work can end in good
// order, and the second ends the program. Otherwise the first one ends it, as the other signals do, unless
// the work looks out for them all: nobody presses those twice. One at a time, on the main thread.
class InterruptScope {
  public:
    enum class Signals { kCtrlC, kAll };
    explicit InterruptScope(Signals signals = Signals::kCtrlC);
    ~InterruptScope();
    InterruptScope(const InterruptScope&) = delete;
    InterruptScope& operator=(const InterruptScope&) = delete;
};

}  // namespace tzhost
