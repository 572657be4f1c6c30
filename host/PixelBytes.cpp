// The loop over the values of a tile. In a file of its own, which is compiled with vectorization.
#include <algorithm>

#include "host/ImageLoading.h"

namespace tzhost {

void toBytes(const float* values, size_t count, uint8_t* bytes) {
    for (size_t i = 0; i < count; ++i) {
        const float within = std::min(std::max(0.0F, values[i]), 1.0F);  // NaN becomes 0
        bytes[i] = static_cast<uint8_t>(static_cast<int32_t>(within * 510.0F + 1.0F) / 2);
    }
}

}  // namespace tzhost
