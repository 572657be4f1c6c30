// The services ITzLogService and ITzLogWriter: the log's entries, and the lines that modules write into them,
// which go to the observer as they come.
#include <mutex>

#include "host/core/Utf8.h"
#include "host/services/Services.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/ITzLog.h"

namespace tzhost {
namespace {

// What both services share.
class LogEntries {
  public:
    uint32_t open(LogEntry entry) {
        const std::lock_guard lock(mutex_);
        entries_.push_back(std::move(entry));
        return static_cast<uint32_t>(entries_.size() - 1);
    }

    void append(Observer& observer, uint32_t entry, std::string_view heading, std::string_view text) {
        const std::lock_guard lock(mutex_);
        if (entry >= entries_.size()) throw CTzError(kTzOutOfBounds);
        const bool ended = !text.empty() && text.back() == '\n';
        const std::string line = ended ? std::string() : std::string(text) + '\n';
        observer.log({entries_[entry], heading, ended ? text : line});
    }

  private:
    std::mutex mutex_;  // guards entries_, and makes calls of the observer one at a time
    std::vector<LogEntry> entries_;
};

class LogService : public HostObject, public ITzLogService {
  public:
    LogService(std::shared_ptr<HostCore> core, std::shared_ptr<LogEntries> entries)
        : HostObject(std::move(core), "service ITzLogService"), entries_(std::move(entries)) {}

    TzResult openEntry(TzText formatName, TzText version, TzText description, TzText subsystem,
                       uint32_t* entry) noexcept override {
        return onAnyThread("ITzLogService::openEntry", [&] {
            if (!entry) throw CTzError(kTzInvalidArgument);
            *entry =
                entries_->open({std::string(checkedText(formatName)), std::string(checkedText(version)),
                                std::string(checkedText(description)), std::string(checkedText(subsystem))});
        });
    }

  private:
    const std::shared_ptr<LogEntries> entries_;
};

class LogWriter : public HostObject, public ITzLogWriter {
  public:
    LogWriter(std::shared_ptr<HostCore> core, std::shared_ptr<LogEntries> entries)
        : HostObject(std::move(core), "service ITzLogWriter"), entries_(std::move(entries)) {}

    TzResult append(uint32_t entry, TzText heading, TzText text) noexcept override {
        return onAnyThread("ITzLogWriter::append", [&] {
            entries_->append(*core().observer, entry, checkedText(heading), checkedText(text));
        });
    }

  private:
    const std::shared_ptr<LogEntries> entries_;
};

}  // namespace

LogServices makeLogServices(const std::shared_ptr<HostCore>& core) {
    const auto entries = std::make_shared<LogEntries>();
    return {CTzPolymorph<LogService, ITzLogService>::create(core, entries).query<ITzObject>(),
            CTzPolymorph<LogWriter, ITzLogWriter>::create(core, entries).query<ITzObject>()};
}

}  // namespace tzhost
