// What a refused or failed operation of the host is told by: the file, the step, the result code, and a
// reason when more is known than the code says. Thrown by the host's library, printed by main().
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "hostsdk/CTzError.h"

namespace tzhost {

// what() is the whole line: "a.svg: recognise: 0x80000005 (not recognised)".
class OperationError : public std::runtime_error {
  public:
    OperationError(std::string_view file, std::string_view step, TzResult code, std::string_view reason = {});

    TzResult code() const { return code_; }

  private:
    TzResult code_;
};

// Runs `work` as a step of work on a file: whatever fails in it leaves as an OperationError of that step.
template <class Work>
auto inStep(std::string_view file, std::string_view step, Work&& work) {
    try {
        return work();
    } catch (const OperationError&) {
        throw;
    } catch (const CTzError& error) {
        throw OperationError(file, step, error.result());
    } catch (const std::bad_alloc&) {
        throw OperationError(file, step, kTzOutOfMemory);
    } catch (const std::exception& error) {
        throw OperationError(file, step, kTzFailed, error.what());
    }
}

}  // namespace tzhost
