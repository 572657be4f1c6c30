// Eight threads read tiles of many drawings at once through OpenImageIO's cache: each tile is what one thread
// alone reads. Usage: OpenImageIoThreads DRAWING...; prints the number of tiles and of failures. One of the
// caches is OpenImageIO's own, which lets go of its images after the module's static objects are gone.
#include <OpenImageIO/imagecache.h>

#include <atomic>
#include <cstdio>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int kThreads = 8;
constexpr int kTilesPerThread = 60;
constexpr int kSide = 256;
constexpr int kDeepest = 65'536;
constexpr size_t kBytes = size_t{kSide} * kSide * 4;

using Pixels = std::vector<unsigned char>;

struct Place {
    OIIO::ustring file;
    int level;
    int x;
    int y;
};

bool read(OIIO::ImageCache& cache, const Place& place, Pixels& pixels) {
    pixels.assign(kBytes, 0);
    return cache.get_pixels(place.file, 0, place.level, place.x, place.x + kSide, place.y, place.y + kSide, 0,
                            1, OIIO::TypeDesc::UINT8, pixels.data());
}

Place somewhere(OIIO::ImageCache& cache, const std::vector<std::string>& files, std::mt19937& random) {
    Place place{OIIO::ustring(files[random() % files.size()] + "?size=" + std::to_string(kDeepest)),
                static_cast<int>(random() % 6), 0, 0};
    OIIO::ImageSpec spec;
    cache.get_imagespec(place.file, spec, 0, place.level);
    const auto tile = [&](int side) {
        return static_cast<int>(random() % static_cast<unsigned>(side / kSide + 1)) * kSide;
    };
    place.x = tile(spec.width - 1);
    place.y = tile(spec.height - 1);
    return place;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> files(argv + 1, argv + argc);
    if (files.empty()) return 2;
    OIIO::ImageCache* const shared = OIIO::ImageCache::create(true);
    OIIO::ImageCache* const alone = OIIO::ImageCache::create(false);
    std::atomic<int> failures{0};
    std::vector<Place> places(size_t{kThreads} * kTilesPerThread);
    std::mt19937 random(1);
    for (Place& place : places) place = somewhere(*shared, files, random);

    std::vector<Pixels> tiles(places.size());
    std::vector<std::thread> threads;
    for (size_t thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            for (size_t i = thread; i < places.size(); i += kThreads) {
                if (!read(*shared, places[i], tiles[i])) ++failures;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();

    size_t drawn = 0;
    Pixels expected;
    for (size_t i = 0; i < places.size(); ++i) {
        if (!read(*alone, places[i], expected) || expected != tiles[i]) ++failures;
        for (size_t byte = 3; byte < kBytes; byte += 4) {
            if (tiles[i][byte] == 0) continue;
            ++drawn;
            break;
        }
    }
    std::printf("%zu tiles, %zu of them drawn on, %d failures\n", places.size(), drawn, failures.load());
    OIIO::ImageCache::destroy(alone);
    return failures == 0 && drawn > places.size() / 4 ? 0 : 1;
}
