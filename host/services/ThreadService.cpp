// The service ITzThreadService: locks and guards for modules that work on several threads. unlock() and
// leave() do not pass the gate, where a test could make them fail: the lock would stay taken.
#include <atomic>
#include <mutex>

#include "host/services/Services.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/ITzServices.h"

namespace tzhost {
namespace {

class ThreadMutex : public HostObject, public ITzThreadMutex {
  public:
    TzResult lock() noexcept override {
        return onAnyThread("ITzThreadMutex::lock", [&] { mutex_.lock(); });
    }
    TzResult unlock() noexcept override {
        mutex_.unlock();
        return kTzOk;
    }

  protected:
    explicit ThreadMutex(std::shared_ptr<HostCore> core) : HostObject(std::move(core), "thread mutex") {}
    ~ThreadMutex() = default;

  private:
    std::mutex mutex_;
};

class ThreadGuard : public HostObject, public ITzThreadGuard {
  public:
    TzResult enter(uint32_t* count) noexcept override {
        return onAnyThread("ITzThreadGuard::enter", [&] {
            if (!count) throw CTzError(kTzInvalidArgument);
            *count = ++inside_;
        });
    }
    TzResult leave() noexcept override {
        --inside_;
        return kTzOk;
    }

  protected:
    explicit ThreadGuard(std::shared_ptr<HostCore> core) : HostObject(std::move(core), "thread guard") {}
    ~ThreadGuard() = default;

  private:
    std::atomic<uint32_t> inside_{0};
};

class ThreadService : public HostObject, public ITzThreadService {
  public:
    explicit ThreadService(std::shared_ptr<HostCore> core)
        : HostObject(std::move(core), "service ITzThreadService") {}

    TzResult createMutex(ITzThreadMutex** out) noexcept override {
        if (out) *out = nullptr;
        return onAnyThread("ITzThreadService::createMutex", [&] {
            if (!out) throw CTzError(kTzInvalidArgument);
            *out = CTzPolymorph<ThreadMutex, ITzThreadMutex>::create(sharedCore()).detach();
        });
    }
    TzResult createGuard(ITzThreadGuard** out) noexcept override {
        if (out) *out = nullptr;
        return onAnyThread("ITzThreadService::createGuard", [&] {
            if (!out) throw CTzError(kTzInvalidArgument);
            *out = CTzPolymorph<ThreadGuard, ITzThreadGuard>::create(sharedCore()).detach();
        });
    }
};

}  // namespace

CTzPtr<ITzObject> makeThreadService(const std::shared_ptr<HostCore>& core) {
    return CTzPolymorph<ThreadService, ITzThreadService>::create(core).query<ITzObject>();
}

}  // namespace tzhost
