// Whole numbers of up to eight digits to characters, without a branch on how many there are.
#pragma once

#include <cstdint>
#include <cstring>

namespace tzsvg {

// Up to eight characters, the first in the lowest byte: put together in a register and stored at once.
using Characters = uint64_t;
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the first character is the lowest byte");

constexpr Characters kZeros = 0x3030303030303030U;  // "00000000"

// Writes all eight bytes.
inline void store(char* out, Characters characters) {
    std::memcpy(out, &characters, sizeof characters);
}

// The eight decimal digits of a number below 10^8, zeros in front: as numbers, not yet as characters. Pairs
// of digits, then single ones are divided off in all lanes of a word at once; the factors are reciprocals
// that are exact for what a lane can hold.
inline Characters eightDigits(uint32_t number) {
    const uint64_t fours = number / 10000 | static_cast<uint64_t>(number % 10000) << 32U;
    const uint64_t hundreds = (fours * 10486 >> 20U) & 0x0000007F0000007FU;
    const uint64_t twos = hundreds | (fours - 100 * hundreds) << 16U;
    const uint64_t tens = (twos * 103 >> 10U) & 0x000F000F000F000FU;
    return tens | (twos - 10 * tens) << 8U;
}

}  // namespace tzsvg
