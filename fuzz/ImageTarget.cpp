// Fuzz target: recognition of a drawing as an image, and three of its tiles: the coarsest, one that is fully
// inside, and the first of the finest. Compressed bytes are handed over as a compressed file.
#include "fuzz/FuzzHost.h"
#include "host/ImageLoading.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace tzfuzz;
    FuzzHost& fuzz = FuzzHost::get();
    const std::string_view bytes = asText(data, size);
    const bool compressed = bytes.substr(0, 2) == "\x1f\x8b";
    const auto in = fuzz.file(compressed ? "in.svgz" : "in.svg", bytes);
    FuzzHost::orRefused([&] {
        const tzhost::LoadedImage image = tzhost::loadImage(fuzz.host(), in);
        tzhost::inStep("in.svg", "tile", [&] {
            tzhost::fetchTile(*image.tiles, 16, {0, 0});
            tzhost::fetchTile(*image.tiles, 6, {1, 1});
            tzhost::fetchTile(*image.tiles, 0, {0, 0});
        });
    });
    return 0;
}
