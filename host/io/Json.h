// JSON with RapidJSON, as this host reads and writes it. The only header that includes RapidJSON, for its
// settings must be the same everywhere.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <new>
#include <string>
#include <vector>

// Otherwise sizes have 32 bits, and a text of more than 4 GB would be cut silently.
#define RAPIDJSON_NO_SIZETYPEDEFINE
namespace rapidjson {
using SizeType = std::size_t;
}
#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>

#include "host/core/Observer.h"

namespace tzhost {

// RapidJSON does not check whether its allocator returns null.
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

// Writes events into a stream of RapidJSON's kind, as one line.
template <class Stream>
using JsonWriter = rapidjson::Writer<Stream, rapidjson::UTF8<>, rapidjson::UTF8<>, JsonAllocator>;

using JsonBuffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, JsonAllocator>;

// Writes events into a buffer, indented by two blanks.
class PrettyJsonWriter
    : public rapidjson::PrettyWriter<JsonBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>, JsonAllocator> {
  public:
    explicit PrettyJsonWriter(JsonBuffer& buffer) : PrettyWriter(buffer) { SetIndent(' ', 2); }

    // RapidJSON's events, for any text.
    bool Key(std::string_view text) { return PrettyWriter::Key(text.data(), text.size()); }
    bool String(std::string_view text) { return PrettyWriter::String(text.data(), text.size()); }
};

// A file that RapidJSON reads chunk by chunk. Reports progress, and the line and column of an error.
class JsonFile {
  public:
    static constexpr size_t kChunkSize = size_t{1} << 16U;

    // Throws when the file cannot be opened.
    JsonFile(const std::filesystem::path& file, Progress& progress);

    // Reads the next chunk over the previous one; empty at the end of the file.
    void readChunk();

    // The chunk. A NUL follows it: RapidJSON takes it for the end of the text.
    const char* begin() const { return buffer_.data(); }
    const char* end() const { return end_; }

    // The chunk's first byte in the file.
    size_t offset() const { return offset_; }

    // "line 1, column 2" of a byte in the file; a byte before the chunk counts as the chunk's first.
    std::string place(size_t offset) const;

  private:
    std::filebuf file_;
    Progress& progress_;
    std::vector<char> buffer_;
    const char* end_;
    size_t offset_ = 0;
    size_t line_ = 1;       // where the chunk begins
    size_t lineStart_ = 0;  // that line's first byte in the file
};

// A RapidJSON input stream on a JsonFile.
class JsonStream {
  public:
    explicit JsonStream(JsonFile& file) : file_(&file) { readChunk(); }

    // ---- The names are RapidJSON's. ----

    using Ch = char;
    Ch Peek() const { return *at_; }
    Ch Take() {
        const Ch next = *at_;
        if (++at_ >= end_) readChunk();
        return next;
    }
    // Whether nothing is left. RapidJSON also stops at a NUL in the file.
    bool atEnd() const { return at_ == end_; }

    size_t Tell() const { return file_->offset() + static_cast<size_t>(at_ - file_->begin()); }

    // For parsing in place: required of every stream, never called for this one.
    Ch* PutBegin() { return nullptr; }
    void Put(Ch /*character*/) {}
    size_t PutEnd(Ch* /*begin*/) { return 0; }

  private:
    void readChunk() {
        file_->readChunk();
        at_ = file_->begin();
        end_ = file_->end();
    }

    JsonFile* file_;
    const char* at_ = nullptr;
    const char* end_ = nullptr;
};

}  // namespace tzhost
