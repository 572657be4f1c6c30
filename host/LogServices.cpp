// The services ITzLogService and ITzLogWriter: the host's log as modules see it.
#include "host/Services.h"
#include "host/Utf8.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/ITzLog.h"

namespace tzhost {
namespace {

class LogService : public HostObject, public ITzLogService {
  public:
    explicit LogService(std::shared_ptr<HostCore> core)
        : HostObject(std::move(core), "service ITzLogService") {}

    TzResult openEntry(TzText formatName, TzText version, TzText description, TzText subsystem,
                       uint32_t* entry) noexcept override {
        return onAnyThread("ITzLogService::openEntry", [&] {
            if (!entry) throw CTzError(kTzInvalidArgument);
            *entry = core().log.openEntry(
                {std::string(checkedText(formatName)), std::string(checkedText(version)),
                 std::string(checkedText(description)), std::string(checkedText(subsystem))});
        });
    }
};

class LogWriter : public HostObject, public ITzLogWriter {
  public:
    explicit LogWriter(std::shared_ptr<HostCore> core)
        : HostObject(std::move(core), "service ITzLogWriter") {}

    TzResult append(uint32_t entry, TzText heading, TzText text) noexcept override {
        return onAnyThread("ITzLogWriter::append",
                           [&] { core().log.append(entry, checkedText(heading), checkedText(text)); });
    }
};

}  // namespace

CTzPtr<ITzObject> makeLogService(const std::shared_ptr<HostCore>& core) {
    return CTzPolymorph<LogService, ITzLogService>::create(core).query<ITzObject>();
}

CTzPtr<ITzObject> makeLogWriter(const std::shared_ptr<HostCore>& core) {
    return CTzPolymorph<LogWriter, ITzLogWriter>::create(core).query<ITzObject>();
}

}  // namespace tzhost
