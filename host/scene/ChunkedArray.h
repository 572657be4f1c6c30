// An array that grows without moving its elements, except while it is small: a large scene never has two
// copies of its points in memory, and an empty array costs nothing. Used by MeshData.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tzhost {

template <class Element>
class ChunkedArray {
  public:
    size_t size() const {
        return chunks_.empty() ? 0 : (chunks_.size() - 1) * kChunkSize + chunks_.back().size();
    }

    const Element& operator[](size_t i) const { return chunks_[i / kChunkSize][i % kChunkSize]; }
    Element& operator[](size_t i) { return chunks_[i / kChunkSize][i % kChunkSize]; }

    void push_back(const Element& element) {
        if (chunks_.empty() || chunks_.back().size() == kChunkSize) addChunk();
        chunks_.back().push_back(element);
    }

    void append(const Element* elements, size_t count) {
        while (count > 0) {
            if (chunks_.empty() || chunks_.back().size() == kChunkSize) addChunk();
            std::vector<Element>& last = chunks_.back();
            const size_t length = std::min(count, kChunkSize - last.size());
            last.insert(last.end(), elements, elements + length);
            elements += length;
            count -= length;
        }
    }

    // Copies `count` elements from `first` on, which must all be there.
    void copy(size_t first, size_t count, Element* out) const {
        while (count > 0) {
            const size_t offset = first % kChunkSize;
            const size_t length = std::min(count, kChunkSize - offset);
            std::copy_n(chunks_[first / kChunkSize].data() + offset, length, out);
            first += length;
            count -= length;
            out += length;
        }
    }

  private:
    static constexpr size_t kChunkSize = size_t{1} << 14U;

    void addChunk() {
        std::vector<Element> next;
        if (!chunks_.empty()) next.reserve(kChunkSize);
        chunks_.push_back(std::move(next));
    }

    std::vector<std::vector<Element>> chunks_;  // all but the last are full
};

}  // namespace tzhost
