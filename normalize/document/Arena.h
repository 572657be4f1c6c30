// Memory that only grows and is freed at once: what views and pointers of a document lead to.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace tznormalize {

// Runs of plain values that stay where they are.
template <class Value>
class Arena {
  public:
    // Room for that many values next to each other, not initialized when their type needs no initializing.
    Value* make(size_t count) {
        if (count > size_t(end_ - next_)) {
            const size_t room = std::max(count, kChunk);
            chunks_.emplace_back(new Value[room]);
            next_ = chunks_.back().get();
            end_ = next_ + room;
        }
        Value* const made = next_;
        next_ += count;
        return made;
    }

  private:
    static constexpr size_t kChunk = size_t{1} << 14;

    std::vector<std::unique_ptr<Value[]>> chunks_;
    Value* next_ = nullptr;
    Value* end_ = nullptr;
};

}  // namespace tznormalize
