// The least host that image tests need: the registry, log, image, type and thread services, a count of the
// images alive, and a way to make the n-th call fail.
#pragma once

#include <atomic>
#include <cstring>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "hostsdk/CTzImpl_Image.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/CTzUser_Image.h"

// Shared by the host and all its objects; outlives them.
struct FakeHostState {
    // Every service call passes here. `failAt` counts down to the call that fails.
    TzResult call() { return failAt.fetch_sub(1) == 0 ? kTzOutOfMemory : kTzOk; }

    std::atomic<int> failAt{-1};
    std::atomic<int> imagesAlive{0};
    std::atomic<int> imagesMade{0};
    std::mutex lock;
    std::vector<std::string> lines;       // "subsystem|heading|text"
    std::vector<std::string> subsystems;  // of log entries
    std::map<std::string, CTzPtr<ITzServerFactory>> servers;
};

class FakeImage : public CTzImpl_Image, public ITzImageWriter {
  public:
    FakeImage(FakeHostState& state, TzSize size, TzPixelFormat format)
        : state_(state), size_(size), format_(format), values_(size_t{size.width} * size.height * 4) {
        ++state_.imagesAlive;
        ++state_.imagesMade;
    }

    TzResult writeRows(uint32_t x, uint32_t y, TzSize rectangle, TzPixelType type, const void* pixels,
                       uint64_t byteCount) noexcept override {
        if (tzFailed(state_.call())) return kTzOutOfMemory;
        if (type != kTzPixelRgbaFloat) return kTzNotSupported;
        if (byteCount != uint64_t{rectangle.width} * rectangle.height * 16) return kTzInvalidArgument;
        if (x + rectangle.width > size_.width || y + rectangle.height > size_.height) return kTzOutOfBounds;
        for (uint32_t row = 0; row < rectangle.height; ++row) {
            std::memcpy(at(x, y + row), static_cast<const char*>(pixels) + size_t{row} * rectangle.width * 16,
                        size_t{rectangle.width} * 16);
        }
        return kTzOk;
    }

  protected:
    ~FakeImage() override { --state_.imagesAlive; }

    TzSize imageSize() const override { return size_; }
    TzPixelFormat imageFormat() const override { return format_; }
    void readImageLine(uint32_t x, uint32_t y, uint32_t count, TzPixelType type, void* out) override {
        if (type != kTzPixelRgbaFloat) throw CTzError(kTzNotSupported);
        if (y >= size_.height || x + count > size_.width) throw CTzError(kTzOutOfBounds);
        std::memcpy(out, at(x, y), size_t{count} * 16);
    }

  private:
    float* at(uint32_t x, uint32_t y) { return values_.data() + (size_t{y} * size_.width + x) * 4; }

    FakeHostState& state_;
    TzSize size_;
    TzPixelFormat format_;
    std::vector<float> values_;
};

class FakeMutex : public ITzThreadMutex {
  public:
    TzResult lock() noexcept override {
        mutex_.lock();
        return kTzOk;
    }
    TzResult unlock() noexcept override {
        mutex_.unlock();
        return kTzOk;
    }

  private:
    std::mutex mutex_;
};

class FakeGuard : public ITzThreadGuard {
  public:
    TzResult enter(uint32_t* count) noexcept override {
        *count = ++inside_;
        return kTzOk;
    }
    TzResult leave() noexcept override {
        --inside_;
        return kTzOk;
    }

  private:
    std::atomic<uint32_t> inside_{0};
};

// One object for the host and each of its services: single inheritance forbids one class for all.
class FakeServices : public ITzServerRegistry,
                     public ITzLogService,
                     public ITzLogWriter,
                     public ITzImageService,
                     public ITzTypeService,
                     public ITzThreadService {
  public:
    explicit FakeServices(FakeHostState& state) : state_(state) {}

    TzResult addServer(TzText name, ITzServerFactory* factory) noexcept override {
        return answer([&] {
            const std::lock_guard held(state_.lock);
            const bool added =
                state_.servers.emplace(tzView(name), CTzPtr<ITzServerFactory>::share(factory)).second;
            return added ? kTzOk : kTzExists;
        });
    }
    TzResult spawn(TzText name, const char* interfaceId, void** out) noexcept override {
        *out = nullptr;
        return answer([&] {
            CTzPtr<ITzServerFactory> factory;
            {
                const std::lock_guard held(state_.lock);
                const auto at = state_.servers.find(std::string(tzView(name)));
                if (at == state_.servers.end()) return kTzNotFound;
                factory = at->second;
            }
            return factory->spawn(interfaceId, out);
        });
    }
    TzResult openEntry(TzText /*format*/, TzText /*version*/, TzText /*description*/, TzText subsystem,
                       uint32_t* entry) noexcept override {
        return answer([&] {
            const std::lock_guard held(state_.lock);
            *entry = static_cast<uint32_t>(state_.subsystems.size());
            state_.subsystems.emplace_back(tzView(subsystem));
            return kTzOk;
        });
    }
    TzResult append(uint32_t entry, TzText heading, TzText text) noexcept override {
        return answer([&] {
            const std::lock_guard held(state_.lock);
            state_.lines.push_back(state_.subsystems.at(entry) + "|" + std::string(tzView(heading)) + "|" +
                                   std::string(tzView(text)));
            return kTzOk;
        });
    }
    TzResult createImage(TzSize size, TzPixelFormat format, ITzImage** out) noexcept override {
        *out = nullptr;
        return answer([&] {
            *out = CTzPolymorph<FakeImage, ITzImage, ITzImageWriter>::create(state_, size, format).detach();
            return kTzOk;
        });
    }
    TzResult typeCode(TzText name, uint32_t* code) noexcept override {
        return answer([&] {
            *code = kImageTypeCode;
            return tzView(name) == "image" ? kTzOk : kTzNotFound;
        });
    }
    TzResult createMutex(ITzThreadMutex** out) noexcept override {
        *out = nullptr;
        return answer([&] {
            *out = CTzPolymorph<FakeMutex, ITzThreadMutex>::create().detach();
            return kTzOk;
        });
    }
    TzResult createGuard(ITzThreadGuard** out) noexcept override {
        *out = nullptr;
        return answer([&] {
            *out = CTzPolymorph<FakeGuard, ITzThreadGuard>::create().detach();
            return kTzOk;
        });
    }

    static constexpr uint32_t kImageTypeCode = 77;

  private:
    template <class Work>
    TzResult answer(Work&& work) noexcept {
        const TzResult injected = state_.call();
        return tzFailed(injected) ? injected : tzGate(std::forward<Work>(work));
    }

    FakeHostState& state_;
};

class FakeHostObject : public ITzHost {
  public:
    explicit FakeHostObject(FakeHostState& state) : state_(state) {}

    TzResult service(const char* interfaceId, void** out) noexcept override {
        *out = nullptr;
        if (tzFailed(state_.call())) return kTzOutOfMemory;
        return tzGate([&] {
            return CTzPolymorph<FakeServices, ITzServerRegistry, ITzLogService, ITzLogWriter, ITzImageService,
                                ITzTypeService, ITzThreadService>::create(state_)
                ->query(interfaceId, out);
        });
    }

  private:
    FakeHostState& state_;
};

struct FakeHost {
    FakeHostState state;
    CTzPtr<ITzHost> object = CTzPolymorph<FakeHostObject, ITzHost>::create(state);

    ~FakeHost() { state.servers.clear(); }
};
