// The image loader and the image, through their interfaces. There is no Qt application
// when the first of these tests begins: the loader makes one.
#include "image/CSVGImage.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QSvgRenderer>
#include <clocale>
#include <cmath>
#include <cstdlib>

#include "host/services/Services.h"
#include "tests/image/ImageFixture.h"

using namespace tzsvg;

namespace {

// Gone after the module's static objects, which are made later.
CTzPtr<ITzImage> lastOfAll;

// One rendering of a whole level, at once and with nothing of the module's but the sizes.
QImage wholeLevel(const QString& path, int width, int height) {
    QSvgRenderer renderer(path);
    const QSize size = renderer.defaultSize();
    renderer.setViewBox(QRectF(renderer.viewBoxF().topLeft(), QSizeF(size)));
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter, QRectF(0, 0, width, height));
    return image;
}

int worstDifference(const Pixel& pixel, QRgb expected) {
    const auto off = [](float value, int channel) {
        return std::abs(static_cast<int>(std::lround(value * 255)) - channel);
    };
    // The colour of a pixel that can hardly be seen is as coarse as its alpha; it counts as it shows.
    const auto shown = [&](float value, int channel) {
        return static_cast<int>(
            std::lround(off(value, channel) * static_cast<double>(qAlpha(expected)) / 255));
    };
    return std::max({shown(pixel.r, qRed(expected)), shown(pixel.g, qGreen(expected)),
                     shown(pixel.b, qBlue(expected)), off(pixel.a, qAlpha(expected))});
}

}  // namespace

TEST_F(ImageTest, recognise) {
    const struct {
        const char* name;
        QByteArray bytes;
        uint32_t width, height;  // 0: refused
    } rows[] = {
        {"size", drawing("width='300' height='200'"), 300, 200},
        {"view box alone", drawing("viewBox='0 0 300 200'"), 300, 200},
        {"size and view box", drawing("width='60' height='40' viewBox='0 0 300 200'"), 60, 40},
        {"percentages", drawing("width='50%' height='100%' viewBox='0 0 300 200'"), 150, 200},
        {"size of the shapes", "<svg xmlns='http://www.w3.org/2000/svg'><rect width='7' height='3'/></svg>",
         7, 3},
        {"no area", "<svg xmlns='http://www.w3.org/2000/svg'/>", 0, 0},
        {"another root", "<html><svg/></html>", 0, 0},
        {"text", "not a drawing", 0, 0},
        {"empty", "", 0, 0},
        {"a picture", "\x89PNG\r\n\x1a\n", 0, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        write(row.bytes);
        const size_t linesBefore = host.lines().size();
        if (row.width == 0) {
            EXPECT_EQ(recognise(), kTzFailed);
            ASSERT_EQ(host.lines().size(), linesBefore + 1);
            EXPECT_EQ(host.lines().back(), "io-status|load/save|Invalid svg document.\n");
            EXPECT_EQ(access.target, nullptr);
            continue;
        }
        ASSERT_EQ(recognise(), kTzOk);
        EXPECT_EQ(host.lines().size(), linesBefore);
        EXPECT_EQ(access.targetType, tzTag("IMAG"));
        EXPECT_EQ(access.flags, 1U);
        EXPECT_EQ(tzView(access.formatName), "SVG");
        ASSERT_NE(access.target, nullptr);
        EXPECT_EQ(access.target->width, row.width);
        EXPECT_EQ(access.target->height, row.height);
        EXPECT_EQ(access.target->format, 4U);
        EXPECT_EQ(access.target->colours, 0U);
    }
    write(drawing("width='300' height='200'"));
    ASSERT_EQ(recognise(), kTzOk);
    QFile::remove(path());
    ITzImage* out = nullptr;
    EXPECT_EQ(loader->load(&access, &out), kTzFailed) << "it is gone before it is loaded";
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(recognise(), kTzFailed);
}

TEST_F(ImageTest, localeStaysTheHosts) {
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
    write(drawing("width='300' height='200'"));
    EXPECT_EQ(recognise(), kTzOk);
    EXPECT_NE(qobject_cast<QGuiApplication*>(QCoreApplication::instance()), nullptr);
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C");
}

TEST_F(ImageTest, outOfBounds) {
    write(drawing("width='100' height='50'"));
    const auto image = load();
    const auto tiles = image.query<ITzTileImage>();
    const auto samples = image.query<ITzImageLevelSample>();
    ITzImage* tile = image.get();
    EXPECT_EQ(tiles->tile(17, {0, 0}, &tile), kTzOutOfBounds);
    EXPECT_EQ(tile, nullptr);
    EXPECT_EQ(tiles->tile(0, {256, 0}, &tile), kTzOutOfBounds);
    EXPECT_EQ(tiles->tile(0, {0, 256}, &tile), kTzOutOfBounds);
    EXPECT_EQ(tiles->tile(9, {64, 0}, &tile), kTzOutOfBounds);
    TzTileLevel level{};
    EXPECT_EQ(tiles->tileLevelSize(17, &level), kTzOutOfBounds);
    Pixel pixels[4] = {};
    EXPECT_EQ(samples->samplePixel(17, 0, 0, 12, pixels), kTzOutOfBounds);
    EXPECT_EQ(samples->samplePixel(7, 128, 0, 12, pixels), kTzOutOfBounds);
    EXPECT_EQ(samples->samplePixel(7, 0, 64, 12, pixels), kTzOutOfBounds);
    EXPECT_EQ(samples->sampleLine(7, 126, 0, 4, 12, pixels), kTzOutOfBounds);
    EXPECT_EQ(samples->sampleLine(7, 0xFFFFFFFFU, 0, 2, 12, pixels), kTzOutOfBounds);
    EXPECT_EQ(samples->samplePixel(7, 0, 0, 11, pixels), kTzNotSupported);
    EXPECT_EQ(image->readPixel(65536, 0, 12, pixels), kTzOutOfBounds);
    EXPECT_EQ(host.imagesAlive(), 0);

    // A long, narrow document: the required bounds test cuts its small levels off.
    write(drawing("width='1' height='1000'"));
    const auto narrow = load().query<ITzImageLevelSample>();
    EXPECT_EQ(narrow->samplePixel(7, 0, 0, 12, pixels), kTzOk);
    EXPECT_EQ(narrow->samplePixel(7, 0, 1, 12, pixels), kTzOutOfBounds);
}

// The tiles of a level, put together, are the level drawn at once: colours and alpha, seams and edges.
TEST_F(ImageTest, tilesMakeUpTheLevel) {
    const struct {
        const char* root;
        uint32_t key;
    } rows[] = {
        {"width='300' height='200'", 10},
        {"width='300' height='200'", 7},
        {"width='100' height='50'", 9},
        {"width='256' height='256'", 9},
        {"width='70' height='300'", 10},
        {"viewBox='10 20 300 200'", 9},
        {"width='150' height='100' viewBox='10 20 300 200'", 9},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::Message() << row.root << " key " << row.key);
        write(drawing(row.root));
        const auto tiles = load().query<ITzTileImage>();
        TzTileLevel level{};
        ASSERT_EQ(tiles->tileLevelSize(16 - row.key, &level), kTzOk);
        const QImage whole =
            wholeLevel(path(), static_cast<int>(level.width), static_cast<int>(level.height));
        int64_t differing = 0;
        for (uint32_t y = 0; y * level.tileHeight < level.height; ++y) {
            for (uint32_t x = 0; x * level.tileWidth < level.width; ++x) {
                ITzImage* out = nullptr;
                ASSERT_EQ(tiles->tile(16 - row.key, {x, y}, &out), kTzOk);
                const auto tile = CTzPtr<ITzImage>::adopt(out);
                const auto pixels = pixelsOf(*tile, {level.tileWidth, level.tileHeight});
                for (uint32_t i = 0; i < pixels.size(); ++i) {
                    const QPoint at(static_cast<int>(x * level.tileWidth + i % level.tileWidth),
                                    static_cast<int>(y * level.tileHeight + i / level.tileWidth));
                    const QRgb expected = whole.rect().contains(at) ? whole.pixel(at) : 0;
                    const int worst = worstDifference(pixels[i], expected);
                    differing += worst > 1 ? 1 : 0;
                    ASSERT_LE(worst, 40) << at.x() << "," << at.y();
                }
            }
        }
        // Edges of text and curves are placed anew in every tile: a few pixels may be a shade off.
        EXPECT_LT(static_cast<double>(differing), 0.002 * level.width * level.height);
    }
}

// Lines over several tiles, and the image as its finest level.
TEST_F(ImageTest, samplesReadTheTiles) {
    write(drawing("width='300' height='200'"));
    const auto image = load();
    const auto samples = image.query<ITzImageLevelSample>();
    const auto tiles = image.query<ITzTileImage>();
    std::vector<Pixel> line(700);
    ASSERT_EQ(samples->sampleLine(10, 200, 300, 700, 12, line.data()), kTzOk);
    for (uint32_t x = 200; x < 900; x += 13) {
        TzTilePlace place{};
        ASSERT_EQ(tiles->tileOfPixel(6, x, 300, &place), kTzOk);
        ITzImage* out = nullptr;
        ASSERT_EQ(tiles->tile(6, place, &out), kTzOk);
        const auto tile = CTzPtr<ITzImage>::adopt(out);
        Pixel expected{};
        tile->readPixel(x % 256, 300 % 256, 12, &expected);
        EXPECT_TRUE(line[x - 200] == expected) << x;
    }
    Pixel direct{};
    Pixel sampled{};
    ASSERT_EQ(image->readPixel(40000, 30000, 12, &direct), kTzOk);
    ASSERT_EQ(samples->samplePixel(16, 40000, 30000, 12, &sampled), kTzOk);
    EXPECT_GT(direct.a, 0.0F);
    EXPECT_TRUE(direct == sampled);
}

// What lies beyond the document's edge does not show in the part of an edge tile that is beyond it; a tile
// with nothing of the document stays transparent and is not drawn over as a whole.
TEST_F(ImageTest, beyondTheEdgeIsTransparent) {
    write(
        "<svg xmlns='http://www.w3.org/2000/svg' width='100' height='50'>"
        "<rect x='-1000' y='-1000' width='3000' height='3000' fill='red'/></svg>");
    const auto tiles = load().query<ITzTileImage>();
    for (const auto& [column, covered] : {std::pair{1U, 64U}, std::pair{2U, 0U}, std::pair{3U, 0U}}) {
        ITzImage* out = nullptr;
        ASSERT_EQ(tiles->tile(9, {column, 0}, &out), kTzOk);
        const auto tile = CTzPtr<ITzImage>::adopt(out);
        const auto pixels = pixelsOf(*tile, {64, 64});
        EXPECT_EQ(std::count_if(pixels.begin(), pixels.end(), [](const Pixel& p) { return p.a > 0; }),
                  64 * int64_t{covered});
    }
    write(
        "<svg xmlns='http://www.w3.org/2000/svg' width='300' height='200'>"
        "<rect x='-1000' y='-1000' width='3000' height='3000' fill='red'/></svg>");
    const auto edge = load().query<ITzTileImage>();
    ITzImage* out = nullptr;
    ASSERT_EQ(edge->tile(8, {0, 0}, &out), kTzOk);
    const auto tile = CTzPtr<ITzImage>::adopt(out);
    const auto pixels = pixelsOf(*tile, {256, 171});
    EXPECT_TRUE(
        std::all_of(pixels.begin(), pixels.end(), [](const Pixel& p) { return p.r == 1 && p.a == 1; }));
}

// The file is looked at anew for every tile; tiles drawn from what it was are drawn again.
TEST_F(ImageTest, fileChanges) {
    const auto filled = [](const char* colour) {
        return QByteArray(
                   "<svg xmlns='http://www.w3.org/2000/svg' width='64' height='64'><rect width='64' "
                   "height='64' fill='") +
               colour + "'/></svg>";
    };
    write(filled("#ff0000"));
    const auto samples = load().query<ITzImageLevelSample>();
    const auto at = [&](uint32_t level) {
        Pixel pixel{};
        EXPECT_EQ(samples->samplePixel(level, 0, 0, 12, &pixel), kTzOk);
        return pixel;
    };
    EXPECT_EQ(at(1).r, 1.0F);
    EXPECT_EQ(at(2).r, 1.0F);
    write(filled("#0000ff"), 50);
    EXPECT_EQ(at(1).r, 1.0F);  // rendered, and nothing has noticed yet
    EXPECT_EQ(at(3).b, 1.0F);
    EXPECT_EQ(at(1).b, 1.0F);
    QFile::remove(path());
    EXPECT_EQ(at(4).a, 0.0F);
    EXPECT_EQ(at(1).b, 1.0F);
    write("no drawing", 40);
    EXPECT_EQ(at(5).a, 0.0F);
    write(filled("#00ff00"), 30);
    EXPECT_EQ(at(6).g, 1.0F);
    EXPECT_EQ(at(4).g, 1.0F);
}

TEST_F(ImageTest, spawnedWithoutALoader) {
    void* out = nullptr;
    const auto registry = host.service<ITzServerRegistry>();
    ASSERT_EQ(registry->spawn(tzText("svgImage"), ITzTileImage::kId, &out), kTzOk);
    const auto tiles = CTzPtr<ITzTileImage>::adopt(static_cast<ITzTileImage*>(out));
    TzTileLevel level{};
    EXPECT_EQ(tiles->tileLevelSize(0, &level), kTzNotReady);
}

// Another's server under the name: the loader does not take its objects for its own.
TEST_F(ImageTest, anothersImageServer) {
    struct Stranger : CTzImpl_Image {
        explicit Stranger(const CTzPtr<ITzHost>& /*host*/) {}
        TzSize imageSize() const override { return {1, 1}; }
        TzPixelFormat imageFormat() const override { return 4; }
        void readImageLine(uint32_t, uint32_t, uint32_t, TzPixelType, void*) override {}
    };
    const ImageHost other;
    const auto theirs = CTzPolymorph<Stranger, ITzImage>::factory(other.object(), nullptr);
    ASSERT_EQ(other.service<ITzServerRegistry>()->addServer(tzText("svgImage"), theirs.get()), kTzOk);
    loader = ImageLoader::create(other.object());
    write(drawing("width='300' height='200'"));
    ASSERT_EQ(recognise(), kTzOk);
    ITzImage* out = nullptr;
    EXPECT_EQ(loader->load(&access, &out), kTzFailed);
    EXPECT_EQ(out, nullptr);
}

// A program's caches let go of images at its very end.
TEST_F(ImageTest, outlivesStaticObjects) {
    write(drawing("width='300' height='200'"));
    EXPECT_EXIT((lastOfAll = load(), std::exit(0)), ::testing::ExitedWithCode(0), "");
}
