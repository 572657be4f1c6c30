// A refused or failed operation of the host: the file, the step, the result code, and a reason when more is
// known than the code says. Thrown by the host's library, printed by main().
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "hostsdk/CTzError.h"

namespace tzhost {

// what() is the whole line: "a.svg: recognise: 0x80000005 (not recognised)".
class OperationError : public CTzError {
  public:
    OperationError(std::string_view file, std::string_view step, TzResult code, std::string_view reason = {});

    const char* what() const noexcept override { return told_->line.c_str(); }
    const std::string& file() const noexcept { return told_->file; }
    const std::string& step() const noexcept { return told_->step; }

    // The same with more behind its line: "...: 0x80000005 (not recognised): line 3: ..."
    OperationError explained(std::string_view why) const;

  private:
    struct Told {
        std::string line;
        std::string file;
        std::string step;
    };
    std::shared_ptr<const Told> told_;  // shared: copying an exception must not throw
};

// The exception that is being handled, as one of that step.
OperationError failureOfStep(std::string_view file, std::string_view step);

// Runs `work` as a step of work on a file: any exception leaves as an OperationError of that step, or of an
// inner step that failed.
template <class Work>
auto inStep(std::string_view file, std::string_view step, Work&& work) {
    try {
        return work();
    } catch (const OperationError&) {
        throw;
    } catch (...) {
        throw failureOfStep(file, step);
    }
}

}  // namespace tzhost
