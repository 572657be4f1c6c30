#include "host/core/ServiceGate.h"

namespace tzhost {

void ServiceGate::watchCalls() {
    failCall(0, Fault::kNone);
}

void ServiceGate::failCall(uint64_t n, Fault fault) {
    const std::lock_guard lock(mutex_);
    calls_ = 0;
    failAt_ = n;
    failWith_ = fault;
    failedOperation_ = "";
    watched_ = true;
}

void ServiceGate::ignoreCalls() {
    watched_ = false;
}

uint64_t ServiceGate::callsCounted() const {
    const std::lock_guard lock(mutex_);
    return calls_;
}

std::string ServiceGate::failedOperation() const {
    const std::lock_guard lock(mutex_);
    return failedOperation_;
}

std::map<std::string, uint32_t> ServiceGate::misuses() const {
    const std::lock_guard lock(mutex_);
    return misuses_;
}

void ServiceGate::objectMade(const char* kind) {
    const std::lock_guard lock(mutex_);
    ++alive_[kind];
}

void ServiceGate::objectGone(const char* kind) noexcept {
    const std::lock_guard lock(mutex_);
    const auto row = alive_.find(kind);
    if (row != alive_.end() && --row->second == 0) alive_.erase(row);
}

std::map<std::string, uint32_t> ServiceGate::objectsAlive() const {
    const std::lock_guard lock(mutex_);
    return alive_;
}

TzResult ServiceGate::refuseThread(const char* operation) noexcept {
    // The call is refused even when there is no memory to record it.
    tzGate([&] {
        const std::lock_guard lock(mutex_);
        ++misuses_[operation];
    });
    return kTzWrongThread;
}

Fault ServiceGate::countCall(const char* operation) noexcept {
    const std::lock_guard lock(mutex_);
    if (++calls_ != failAt_) return Fault::kNone;
    failedOperation_ = operation;
    return failWith_;
}

}  // namespace tzhost
