// Ctrl-C as the user's cancel. Used around an import and around the writing of a file; asked by the monitor
// and by OutputFile.
#pragma once

#include <csignal>

namespace tzhost {

// While one of these is alive, the first Ctrl-C is noted, and the second one ends the program as usual.
class InterruptScope {
  public:
    InterruptScope();
    ~InterruptScope();
    InterruptScope(const InterruptScope&) = delete;
    InterruptScope& operator=(const InterruptScope&) = delete;

  private:
    struct sigaction previous_ {};
};

// Whether Ctrl-C was pressed since the scope began.
bool interrupted();

}  // namespace tzhost
