// RapidJSON as the scene file reader uses it.
#pragma once

#include <cstdlib>
#include <new>

// A text's size is counted in 32 bits otherwise, and a text of more than 4 GB would be cut without a word.
#define RAPIDJSON_NO_SIZETYPEDEFINE
namespace rapidjson {
using SizeType = std::size_t;
}
#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

namespace tzhost {

// RapidJSON takes what its allocator answers without a look.
struct JsonAllocator {
    static void* Realloc(void* memory, size_t /*oldSize*/, size_t size) {
        void* const moved = std::realloc(memory, size);
        if (!moved) throw std::bad_alloc();
        return moved;
    }
    static void Free(void* memory) { std::free(memory); }
};

using JsonReader = rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, JsonAllocator>;

template <class Handler>
using JsonHandler = rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Handler>;

}  // namespace tzhost
