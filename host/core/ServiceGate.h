// The one place that every service and scene operation of the host passes. It checks the thread, and it is
// where tests count the calls and make one of them fail. Used by all host objects; read by tests and by the
// unload of a module.
#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>

#include "hostsdk/CTzError.h"

namespace tzhost {

// What a test makes one call do.
enum class Fault {
    kNone,
    kCode,        // answered with kTzOutOfMemory; nothing is done
    kException,   // an exception inside the host's implementation
    kNullResult,  // answered with success; nothing is done, and what would be handed out is null
};

class ServiceGate {
  public:
    // The thread that makes the gate is the host thread.
    ServiceGate() : hostThread_(std::this_thread::get_id()) {}
    ServiceGate(const ServiceGate&) = delete;
    ServiceGate& operator=(const ServiceGate&) = delete;

    // An operation tagged [host thread]. On any other thread nothing is done: the call is recorded as a
    // misuse and answered with kTzWrongThread. `operation` is static storage.
    template <class Work>
    TzResult onHostThread(const char* operation, Work&& work) noexcept {
        if (std::this_thread::get_id() != hostThread_) return refuseThread(operation);
        return onAnyThread(operation, std::forward<Work>(work));
    }

    // An operation tagged [any thread].
    template <class Work>
    TzResult onAnyThread(const char* operation, Work&& work) noexcept {
        const Fault fault = watched_.load(std::memory_order_relaxed) ? countCall(operation) : Fault::kNone;
        if (fault == Fault::kCode) return kTzOutOfMemory;
        if (fault == Fault::kNullResult) return kTzOk;
        return tzGate([&] {
            if (fault == Fault::kException) throw std::runtime_error("asked for by a test");
            return work();
        });
    }

    // ---- For tests ----

    // Counts calls from 0 on.
    void watchCalls();
    // The same, and the n-th call from now on (1 is the next) goes wrong.
    void failCall(uint64_t n, Fault fault = Fault::kCode);
    // Ends both. The count stays to be read.
    void ignoreCalls();
    uint64_t callsCounted() const;
    // The operation that failCall() made fail; empty when the calls ended before it.
    std::string failedOperation() const;

    // Operations called on a thread that they do not allow, and how often.
    std::map<std::string, uint32_t> misuses() const;

    // ---- Host objects alive, by kind; kept by HostObject ----

    void objectMade(const char* kind);
    void objectGone(const char* kind) noexcept;
    std::map<std::string, uint32_t> objectsAlive() const;

  private:
    TzResult refuseThread(const char* operation) noexcept;
    Fault countCall(const char* operation) noexcept;

    const std::thread::id hostThread_;
    // Off outside of tests: the only cost per call is this load.
    std::atomic<bool> watched_{false};

    mutable std::mutex mutex_;  // guards all below
    uint64_t calls_ = 0;
    uint64_t failAt_ = 0;  // 0: no call
    Fault failWith_ = Fault::kNone;
    const char* failedOperation_ = "";
    std::map<std::string, uint32_t> misuses_;
    std::map<std::string, uint32_t> alive_;
};

}  // namespace tzhost
