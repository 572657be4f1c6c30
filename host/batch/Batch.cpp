#include "host/batch/Batch.h"

#include <chrono>
#include <cstdio>
#include <cstring>
#include <map>

#include "host/batch/Workers.h"
#include "host/commands/Reporting.h"
#include "host/core/Utf8.h"

namespace tzhost {
namespace {

// What a worker answers when it can do none of the files, since a module cannot be loaded.
constexpr int kNoHost = 255;

// The files that are done, told in their order.
class Tally {
  public:
    Tally(const BatchCommand& command, const BatchPlan& plan, const Terminal& terminal)
        : command_(command), plan_(plan), terminal_(terminal) {}

    void add(size_t job, JobResult&& result) {
        if (!result.isAnswered) {
            const CommandFiles& files = plan_.files[job];
            for (const std::string& file : {files.out, files.log, files.notes})
                if (!file.empty()) removeLeftBeside(file, result.process);
            const std::string reason =
                result.endSignal == 0
                    ? "its process has ended"
                    : std::string("its process was ended by a signal: ") + strsignal(result.endSignal);
            result.err += "tzhost: ";
            result.err += OperationError(files.in, command_.name, kTzFailed, reason).what();
            result.err += "\n";
        }
        ++(result.status == kDone ? done_ : failed_);
        waiting_[job] = std::move(result);
        for (auto next = waiting_.find(told_); next != waiting_.end(); next = waiting_.find(++told_)) {
            tell(next->second);
            waiting_.erase(next);
        }
    }

    // Those that came out of their turn.
    void tellRest() {
        for (const auto& [job, result] : waiting_) tell(result);
    }

    void tellSummary(const std::string& folder, double seconds) const {
        std::array<char, 32> time{};
        std::snprintf(time.data(), time.size(), "%.3f s", seconds);
        std::string line = command_.name + ": " + std::to_string(done_) + " done";
        if (plan_.upToDate > 0) line += ", " + std::to_string(plan_.upToDate) + " up to date";
        if (failed_ > 0) line += ", " + std::to_string(failed_) + " failed";
        if (const size_t left = plan_.files.size() - done_ - failed_; left > 0)
            line += ", " + std::to_string(left) + " not done";
        if (!terminal_.isQuiet())
            std::printf("%s, %s -> %s\n", line.c_str(), time.data(), toOneLine(folder).c_str());
    }

    size_t failed() const { return failed_; }

  private:
    void tell(const JobResult& result) const {
        if (result.out.empty() && result.err.empty()) return;
        terminal_.clearBar();
        std::fputs(result.out.c_str(), stdout);
        std::fflush(stdout);
        std::fputs(result.err.c_str(), stderr);
    }

    const BatchCommand& command_;
    const BatchPlan& plan_;
    const Terminal& terminal_;
    size_t done_ = 0;
    size_t failed_ = 0;
    size_t told_ = 0;                      // the next one to tell
    std::map<size_t, JobResult> waiting_;  // those that are not told
};

// In a worker: does one file after the other with the same modules.
class BatchWorker {
  public:
    BatchWorker(const BatchCommand& command, const BatchPlan& plan, std::shared_ptr<Terminal> terminal)
        : command_(command),
          plan_(plan),
          terminal_(std::move(terminal)),
          context_(command.modules, terminal_) {
        terminal_->hideProgress();
    }
    ~BatchWorker() {
        reported([this] {
            terminal_->setSubject({});
            context_.close();
            return kDone;
        });
    }
    BatchWorker(const BatchWorker&) = delete;
    BatchWorker& operator=(const BatchWorker&) = delete;

    int run(size_t job) {
        const CommandFiles& files = plan_.files[job];
        terminal_->setSubject(files.in);
        const int status = reported(
            [&] { return inStep(files.in, command_.name, [&] { return command_.run(context_, files); }); });
        return context_.hasNoHost() ? kNoHost : status;
    }

  private:
    const BatchCommand& command_;
    const BatchPlan& plan_;
    const std::shared_ptr<Terminal> terminal_;
    CommandContext context_;
};

}  // namespace

int runBatch(const BatchCommand& command, const BatchPlan& plan, const BatchArguments& arguments,
             const std::shared_ptr<Terminal>& terminal) {
    const auto began = std::chrono::steady_clock::now();
    const InterruptScope interruptScope(InterruptScope::Signals::kAll);
    Tally tally(command, plan, *terminal);
    Progress progress(*terminal, command.name, plan.files.size());
    progress.update();  // which ends the thread that a title waits in: workers are forked from here
    runInProcesses(
        plan.files.size(), arguments.jobs > 0 ? arguments.jobs : usableProcessors(),
        [&] {
            const auto worker = std::make_shared<BatchWorker>(command, plan, terminal);
            return [worker](size_t job) { return worker->run(job); };
        },
        [&](size_t job, JobResult& result) {
            const bool hasHost = result.status != kNoHost;
            tally.add(job, std::move(result));
            progress.step();
            progress.update();
            return hasHost;
        });
    progress.close();
    tally.tellRest();
    tally.tellSummary(arguments.folder,
                      std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count());
    if (interruptSignal() != 0) {
        printError("interrupted");
        return exitStatusOf(interruptSignal());
    }
    return tally.failed() > 0 ? kFailed : kDone;
}

}  // namespace tzhost
