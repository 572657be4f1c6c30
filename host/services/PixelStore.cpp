// The loops over values are compiled with vectorization.
#include "host/services/PixelStore.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <mutex>

#include "host/services/PixelMemory.h"

namespace tzhost {
namespace {

constexpr size_t kChannels = 4;
constexpr size_t kPixelBytes = kChannels * sizeof(float);  // as they go in and out

// i / 255, correctly rounded. The first product is exact, and the second too small for its rounding to
// matter: three quick operations where a division is a slow one.
constexpr float valueOf(int32_t byte) {
    constexpr float kFirst16Bits = 257.0F / 65536.0F;
    constexpr float kRest = 1.0F / 65536.0F / 255.0F;
    const auto i = static_cast<float>(byte);
    return i * kFirst16Bits + i * kRest;
}

constexpr bool isCorrectlyRounded() {
    for (int32_t i = 0; i < 256; ++i) {
        if (valueOf(i) != static_cast<float>(i) / 255.0F) return false;
    }
    return true;
}
static_assert(isCorrectlyRounded());

uint32_t bitsOf(float value) {
    uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// The byte of every value; false when a value is not that of its byte, bit for bit.
bool toExactBytes(const char* values, size_t count, char* bytes) {
    uint32_t differing = 0;
    for (size_t i = 0; i < count; ++i) {
        float value = 0;
        std::memcpy(&value, values + i * sizeof value, sizeof value);
        // From 2^23 on, the last bit of a float counts ones. For a value out of range any byte will do.
        constexpr float kOnesLast = 8388608.0F;
        const auto byte = static_cast<int32_t>(bitsOf(value * 255.0F + kOnesLast) & 0xFFU);
        differing |= bitsOf(valueOf(byte)) ^ bitsOf(value);
        bytes[i] = static_cast<char>(byte);
    }
    return differing == 0;
}

void toValues(const char* bytes, size_t count, char* values) {
    for (size_t i = 0; i < count; ++i) {
        const float value = valueOf(static_cast<uint8_t>(bytes[i]));
        std::memcpy(values + i * sizeof value, &value, sizeof value);
    }
}

constexpr size_t kPiece = 32 * kChannels;

// A piece of a row: many are of one colour. One with a value that is not that of a byte is not written.
bool writePiece(const char* values, size_t count, char* bytes) {
    std::array<char, kPiece> piece;
    if (std::memcmp(values, values + kPixelBytes, count * sizeof(float) - kPixelBytes) == 0) {
        if (!toExactBytes(values, kChannels, piece.data())) return false;
        for (size_t i = 0; i < count; i += kChannels) std::memcpy(bytes + i, piece.data(), kChannels);
    } else {
        if (!toExactBytes(values, count, piece.data())) return false;
        std::memcpy(bytes, piece.data(), count);
    }
    return true;
}

}  // namespace

PixelStore::PixelStore(TzSize size) : size_(size), bytes_(makePixelMemory(valuesBefore(0, size.height))) {}

void PixelStore::write(uint32_t x, uint32_t y, TzSize rectangle, const void* values) {
    const char* const from = static_cast<const char*>(values);
    {
        const std::shared_lock held(lock_);
        if (floats_) return writeFloats(x, y, rectangle, from);
        if (writeBytes(x, y, rectangle, from)) return;
    }
    const std::lock_guard held(lock_);
    if (!floats_) becomeFloats();
    writeFloats(x, y, rectangle, from);
}

void PixelStore::read(uint32_t x, uint32_t y, uint32_t count, void* values) const {
    const size_t from = valuesBefore(x, y);
    if (floats_) {
        std::memcpy(values, floats_.get() + from * sizeof(float), count * kPixelBytes);
    } else {
        toValues(bytes_.get() + from, count * kChannels, static_cast<char*>(values));
    }
}

bool PixelStore::writeBytes(uint32_t x, uint32_t y, TzSize rectangle, const char* values) {
    const size_t count = rectangle.width * kChannels;
    const size_t rowBytes = count * sizeof(float);
    const size_t stride = size_.width * kChannels;
    char* target = bytes_.get() + valuesBefore(x, y);
    for (uint32_t row = 0; row < rectangle.height; ++row, values += rowBytes, target += stride) {
        // Many rows are as the one above.
        if (row > 0 && std::memcmp(values, values - rowBytes, rowBytes) == 0) {
            std::memcpy(target, target - stride, count);
            continue;
        }
        for (size_t done = 0; done < count; done += kPiece) {
            const size_t length = std::min(kPiece, count - done);
            if (!writePiece(values + done * sizeof(float), length, target + done)) return false;
        }
    }
    return true;
}

void PixelStore::writeFloats(uint32_t x, uint32_t y, TzSize rectangle, const char* values) {
    const size_t rowBytes = rectangle.width * kPixelBytes;
    for (uint32_t row = 0; row < rectangle.height; ++row, values += rowBytes)
        std::memcpy(floats_.get() + valuesBefore(x, y + row) * sizeof(float), values, rowBytes);
}

void PixelStore::becomeFloats() {
    std::shared_ptr<char> floats = makePixelMemory(valuesBefore(0, size_.height) * sizeof(float));
    const size_t count = size_.width * kChannels;
    for (uint32_t y = 0; y < size_.height; ++y) {
        const char* const row = bytes_.get() + valuesBefore(0, y);
        // What stays 0 stays without memory.
        if (std::any_of(row, row + count, [](char byte) { return byte != 0; }))
            toValues(row, count, floats.get() + valuesBefore(0, y) * sizeof(float));
    }
    floats_ = std::move(floats);
    bytes_.reset();
}

size_t PixelStore::valuesBefore(uint32_t x, uint32_t y) const {
    return (size_t{y} * size_.width + x) * kChannels;
}

}  // namespace tzhost
