// The library's structs on their way in and out. A caller may have been compiled with an earlier header,
// whose structs end sooner: what is not there reads as zero, and is not written.
#pragma once

#include <algorithm>
#include <cstring>

#include "adapters/c/Guard.h"

namespace tzh {

// What the caller gave, as far as it goes. All zero for NULL.
template <class Struct>
Struct copyIn(const Struct* given) {
    Struct copy{};
    if (!given) return copy;
    require(given->size >= sizeof(size_t), "a struct's size is not set");
    std::memcpy(&copy, given, std::min(given->size, sizeof(Struct)));
    return copy;
}

// Fills the caller's struct, which keeps its size.
template <class Struct>
void copyOut(Struct from, Struct* to) {
    const size_t size = to->size;
    from.size = size;
    std::memcpy(to, &from, std::min(size, sizeof(Struct)));
}

// The caller's struct is there and knows its size.
template <class Struct>
void requireStruct(const Struct* given) {
    require(given, "a struct is NULL");
    require(given->size >= sizeof(size_t), "a struct's size is not set");
}

}  // namespace tzh
