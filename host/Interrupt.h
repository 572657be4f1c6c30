// Ctrl-C as the user's cancel. Used around an import and around the writing of a file; asked by the
// monitor and by what writes scenes and tiles.
#pragma once

namespace tzhost {

// While one of these is alive, on any thread, the first Ctrl-C is noted, and the second one ends the program
// as usual.
class InterruptScope {
  public:
    InterruptScope();
    ~InterruptScope();
    InterruptScope(const InterruptScope&) = delete;
    InterruptScope& operator=(const InterruptScope&) = delete;
};

// Whether Ctrl-C was pressed since the first of the scopes alive began.
bool interrupted();

}  // namespace tzhost
