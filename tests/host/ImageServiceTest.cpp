// Images of the host's image service give back bit for bit what was written, however they keep it.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>
#include <fstream>
#include <limits>
#include <random>
#include <thread>

#include "host/Host.h"
#include "hostsdk/CTzUser_Image.h"

namespace tzhost {
namespace {

float ofBits(uint32_t bits) {
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// What a module writes for a byte.
float ofByte(size_t i) {
    return static_cast<float>(i * 257) / 65535;
}

// An image, and beside it what it should hold.
class Written {
  public:
    explicit Written(TzSize size)
        : image(CTzUser_ImageService(
                    CTzUser_Host(CTzPtr<ITzHost>::share(host().object())).service<ITzImageService>())
                    .createImage(size, kTzFormatRgbaFloat)),
          writer(image.pointer().query<ITzImageWriter>()),
          size_(size),
          expected_(size_t{size.width} * size.height * 4) {}

    // The values of the rectangle come from `next`.
    template <class Next>
    void write(uint32_t x, uint32_t y, TzSize rectangle, Next&& next) {
        std::vector<float> values(size_t{rectangle.width} * rectangle.height * 4);
        for (float& value : values) value = next();
        const size_t row = size_t{rectangle.width} * 4;
        for (uint32_t i = 0; i < rectangle.height; ++i)
            std::memcpy(&expected_[(size_t{y + i} * size_.width + x) * 4], &values[i * row], row * 4);
        writer.writeRows(x, y, rectangle, kTzPixelRgbaFloat, values.data(), values.size() * 4);
    }

    void expectRead() const {
        std::vector<uint32_t> read(expected_.size() + 4);
        const size_t row = size_t{size_.width} * 4;
        for (uint32_t y = 0; y < size_.height; ++y)
            image.readLine(0, y, size_.width, kTzPixelRgbaFloat, &read[y * row]);
        image.readPixel(size_.width / 2, 0, kTzPixelRgbaFloat, &read[expected_.size()]);
        const auto last = read.end() - 4;
        EXPECT_TRUE(std::equal(read.begin(), last, expected_.begin()));
        EXPECT_TRUE(std::equal(last, read.end(), &expected_[size_.width / 2 * size_t{4}]));
    }

    const CTzUser_Image image;
    const CTzUser_ImageWriter writer;

  private:
    static Host& host() {
        static Host theHost;
        return theHost;
    }

    const TzSize size_;
    std::vector<uint32_t> expected_;  // bits
};

// Bytes throughout, then one value in the last row of a rectangle in the middle, then bytes again.
TEST(ImageService, givesBackWhatWasWritten) {
    std::vector<float> odd = {-0.0F,      INFINITY,    ofBits(0x7FA00001U), ofBits(0xFFC12345U), ofBits(1),
                              -ofByte(1), ofByte(256), ofByte(300),         1.0F / 3.0F};
    for (size_t i = 0; i < 256; ++i) {
        odd.push_back(ofByte(i));
        odd.push_back(std::nextafter(ofByte(i), 2.0F));
        odd.push_back(std::nextafter(ofByte(i), -1.0F));
    }
    for (const float value : odd) {
        SCOPED_TRACE(value);
        Written image({70, 9});
        image.expectRead();
        size_t i = 0;
        image.write(0, 0, {70, 9}, [&] { return ofByte(i++ % 256); });
        image.expectRead();
        i = 0;
        image.write(20, 3, {45, 4}, [&] { return ++i == 45 * 4 * 4 - 1 ? value : ofByte(7); });
        image.expectRead();
        image.write(3, 5, {67, 3}, [&] { return ofByte(i++ % 256); });
        image.expectRead();
    }
}

// Rectangles of every kind; one in fifty has other values than those of bytes.
TEST(ImageService, rectangles) {
    std::mt19937 random(3);
    const auto below = [&](uint32_t limit) { return static_cast<uint32_t>(random() % limit); };
    for (int round = 0; round < 60; ++round) {
        const TzSize size{1 + below(150), 1 + below(40)};
        Written image(size);
        for (int i = 0; i < 30; ++i) {
            const uint32_t x = below(size.width);
            const uint32_t y = below(size.height);
            const uint32_t run = 4U << below(9U);  // values until the next colour
            const float other = below(50) == 0 ? 0.001F : 0.0F;
            uint32_t at = 0;
            float value = 0;
            image.write(x, y, {1 + below(size.width - x), 1 + below(size.height - y)}, [&] {
                if (at++ % run == 0) value = ofByte(below(256));
                return value + other;
            });
        }
        image.expectRead();
    }
}

// Parts of one image from several threads at once, which change how it is kept: all but the first.
TEST(ImageService, threads) {
    constexpr uint32_t kThreads = 3;
    constexpr TzSize kPart{256, 200};
    for (int round = 0; round < 10; ++round) {
        Written image({kPart.width, kThreads * kPart.height});
        std::atomic<uint32_t> ready = 0;
        std::vector<std::thread> threads;
        for (uint32_t part = 0; part < kThreads; ++part) {
            threads.emplace_back([&, part] {
                uint32_t at = 0;
                image.write(0, part * kPart.height, kPart, [&] {
                    if (++at < kPart.width * kPart.height * 4) return ofByte((at + part) % 256);
                    for (++ready; ready < kThreads;) std::this_thread::yield();
                    return part == 0 ? 0.0F : 0.3F;
                });
            });
        }
        for (std::thread& thread : threads) thread.join();
        image.expectRead();
    }
}

TEST(ImageService, refuses) {
    Written image({8, 4});
    image.write(0, 0, {8, 4}, [] { return ofByte(9); });
    const std::vector<float> values(128, 0.3F);
    const struct {
        uint32_t x, y;
        TzSize rectangle;
        TzPixelType type;
        uint64_t bytes;
        TzResult result;
    } rows[] = {
        {1, 0, {8, 1}, 12, 128, kTzOutOfBounds},
        {0, 1, {8, 4}, 12, 512, kTzOutOfBounds},
        {9, 0, {0, 1}, 12, 0, kTzOutOfBounds},
        {0xFFFFFFFFU, 0, {2, 1}, 12, 32, kTzOutOfBounds},
        {0, 0, {8, 1}, 12, 127, kTzInvalidArgument},
        {0, 0, {8, 1}, 4, 128, kTzNotSupported},
        {8, 4, {0, 0}, 12, 0, kTzOk},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.result, image.writer.pointer()->writeRows(row.x, row.y, row.rectangle, row.type,
                                                                values.data(), row.bytes));
    }
    float line[32];
    EXPECT_EQ(kTzOutOfBounds, image.image.pointer()->readLine(1, 0, 8, kTzPixelRgbaFloat, line));
    EXPECT_EQ(kTzOutOfBounds, image.image.pointer()->readPixel(0, 4, kTzPixelRgbaFloat, line));
    image.expectRead();
}

// Where there is room for bytes and none for floats.
TEST(ImageService, outOfMemory) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizer needs addresses of its own";
#endif
    constexpr uint32_t kSide = 4096;
    Written image({kSide, kSide});
    rlimit before{};
    ASSERT_EQ(0, getrlimit(RLIMIT_AS, &before));
    size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    rlimit tight = before;
    tight.rlim_cur = pages * 4096 + (rlim_t{64} << 20U);
    const std::vector<float> bytes(size_t{kSide} * 4, ofByte(200));
    std::vector<float> other = bytes;
    other.back() = 0.3F;
    const auto write = [&](const std::vector<float>& row, uint32_t y) {
        return image.writer.pointer()->writeRows(0, y, {kSide, 1}, kTzPixelRgbaFloat, row.data(),
                                                 row.size() * 4);
    };
    ASSERT_EQ(0, setrlimit(RLIMIT_AS, &tight));
    const TzResult asBytes = write(bytes, 0);
    const TzResult asFloats = write(other, 1);
    ASSERT_EQ(0, setrlimit(RLIMIT_AS, &before));
    EXPECT_EQ(kTzOk, asBytes);
    EXPECT_EQ(kTzOutOfMemory, asFloats);
    std::vector<float> line(bytes.size());
    image.image.readLine(0, 0, kSide, kTzPixelRgbaFloat, line.data());
    EXPECT_EQ(bytes, line);
    EXPECT_EQ(kTzOk, write(other, 1));
    image.image.readLine(0, 1, kSide, kTzPixelRgbaFloat, line.data());
    EXPECT_EQ(other, line);
}

}  // namespace
}  // namespace tzhost
