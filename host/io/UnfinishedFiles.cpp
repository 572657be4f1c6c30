#include "host/io/UnfinishedFiles.h"

#include <unistd.h>

#include <array>
#include <atomic>

namespace tzhost {
namespace {

// A signal handler can take no lock: a name is one pointer, null where the slot is free.
constexpr size_t kSlots = 512;
std::array<std::atomic<const char*>, kSlots> slots{};
static_assert(std::atomic<const char*>::is_always_lock_free);

}  // namespace

UnfinishedFile::UnfinishedFile(const std::string& name) noexcept : name_(name.c_str()), slot_(0) {
    for (const char* free = nullptr; slot_ < kSlots && !slots.at(slot_).compare_exchange_strong(free, name_);
         free = nullptr) {
        ++slot_;
    }
}

UnfinishedFile::~UnfinishedFile() {
    const char* mine = name_;
    if (slot_ == kSlots || slots.at(slot_).compare_exchange_strong(mine, nullptr)) return;
    // The handler has taken the name and is about to use it; the process ends.
    while (true) pause();
}

void removeUnfinishedFiles() noexcept {
    for (auto& slot : slots) {
        if (const char* const name = slot.exchange(nullptr)) unlink(name);
    }
}

}  // namespace tzhost
