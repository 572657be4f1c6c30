// The commands for images, run as programs with the module: what they print and what they leave behind.
#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>
#include <cctype>
#include <cstring>

#include "tests/common/ProgramRun.h"
#include "tests/image/GuardedDocuments.h"

namespace {

class ImageCommands : public ::testing::Test {
  protected:
    ImageCommands() {
        folder_.write("half.svg",
                      "<svg xmlns='http://www.w3.org/2000/svg' width='300' height='200'><rect width='150' "
                      "height='200' fill='#204060'/></svg>");
        folder_.write("long.svg",
                      "<svg xmlns='http://www.w3.org/2000/svg' width='1' height='1000'><rect width='1' "
                      "height='1000' fill='#ff0000'/></svg>");
        folder_.write("text.svg", "no drawing");
        folder_.write("thin.svg", "<svg viewBox='0 0 100 0.3' width='10'/>");
    }

    int run(const std::string& arguments) { return tzhost::runProgram(folder_, arguments); }

    QImage picture(const std::string& name) const {
        return QImage(QString::fromStdString((folder_ / name).native()));
    }

    TestFolder folder_;
};

}  // namespace

TEST_F(ImageCommands, refuse) {
    tzhost::expectRefusals(folder_, "image/refused-commands.txt");
}

TEST_F(ImageCommands, sayWhichLimitRefuses) {
    const QByteArray hugePicture = "<svg width='9' height='9'>\n<image href='huge.png'/></svg>";
    const struct {
        const char* file;
        QByteArray document;
        const char* reason;
    } rows[] = {
        {"link.svg", tzsvg::image("half.svg"), "line 1, column 105: an image leads to another SVG"},
        {"data.svg", tzsvg::image("data:," + tzsvg::svg("").toPercentEncoding()),
         "an image leads to another SVG"},
        {"huge.svg", hugePicture, "line 2, column 1: its pictures unpack to more than 1024 MiB"},
        {"device.svg", tzsvg::image("/dev/zero"), "line 1, column 105: a link leads to a pipe or a device"},
        {"stops.svg", tzsvg::stops(4097), "a gradient has more than 4096 stops"},
        {"uses.svg", tzsvg::doubling(30), "its uses lead back to themselves, are nested too deeply, or make"},
        {"styles.svg", tzsvg::styled(40000, 40000),
         "too many rules for so many elements; --normalize: style"},
        {"dashes.svg", tzsvg::dashed(2000, "0.05"),
         "a line of about 2000000 dashes; an image may have 1048576"},
        {"plain.svgz", tzsvg::svg(""), "not compressed, as its name says it is"},
        {"packed.svg",
         QByteArray::fromHex("1f8b0800000000000203b3292e4b57c84cb155af52d7b7030012459bf70d000000"),
         "compressed, and its name ends neither in .svgz nor in .svg.gz; --normalize: "},
    };
    folder_.write("huge.png", tzsvg::hugePng().toStdString());
    for (const auto& row : rows) {
        folder_.write(row.file, row.document.toStdString());
        EXPECT_EQ(run(std::string("image-info ") + row.file), 1) << row.file;
        EXPECT_PRED_FORMAT2(testing::IsSubstring, std::string("(failed): "), folder_.read(".err"));
        EXPECT_PRED_FORMAT2(testing::IsSubstring, row.reason, folder_.read(".err"));
    }
}

TEST_F(ImageCommands, keepTheLogOfARefusal) {
    for (const char* const arguments :
         {"image-info text.svg", "tile text.svg 0 0 0 out.png", "sample text.svg 0 0 0"}) {
        EXPECT_EQ(run(std::string(arguments) + " --log log.txt"), 1) << arguments;
        EXPECT_EQ(folder_.read("log.txt"), "Invalid svg document.\n") << arguments;
        std::filesystem::remove(folder_ / "log.txt");
    }
}

TEST_F(ImageCommands, imageInfo) {
    ASSERT_EQ(run("image-info half.svg --json"), 0) << folder_.read(".err");
    std::string info = folder_.read(".out");
    info.erase(std::remove_if(info.begin(), info.end(), [](unsigned char c) { return std::isspace(c); }),
               info.end());
    const auto levels = info.find(R"("levels":[)");
    ASSERT_NE(levels, std::string::npos) << info;
    EXPECT_EQ(info.substr(0, levels),
              R"({"recognised":{"targetType":"image","flags":1,"formatName":"SVG","format":4,"width":300,)"
              R"("height":200,"colours":0},"image":{"width":65536,"height":43691,"format":4},)");
    EXPECT_EQ(std::count(info.begin() + levels, info.end(), '{'), 17);
    for (const char* const level :
         {R"([{"key":0,"width":1,"height":1,"tileWidth":1,"tileHeight":1},)",
          R"({"key":8,"width":256,"height":171,"tileWidth":256,"tileHeight":171},)"})
        EXPECT_NE(info.find(level), std::string::npos) << info;
}

// The page of a drawing, whatever its lowest shape is and where it stands; a scene file takes its top for the
// page's.
TEST_F(ImageCommands, previewThePage) {
    const struct {
        const char* drawing;
        int left, top;  // of a square of 20 pixels, in a picture of 80 by 40
    } rows[] = {
        {"<svg viewBox='0 0 8 4'><path d='M1,1 H3 V3 H1 z'/></svg>", 10, 10},
        {"<svg viewBox='-1 -4 8 4'><path d='M1,-3 H3 V-1 H1 z'/></svg>", 20, 10},
        {"<svg viewBox='0 0 8 4'><defs><path d='M0,90 H3'/></defs><path d='M1,1 H3 V3 H1 z'/></svg>", 10, 10},
        {"<svg width='8' height='4'><path d='M1,1 H3 V3 H1 z'/></svg>", 10, 10},
        {"<svg width='8mm' height='4mm'><rect x='1mm' y='1mm' width='2mm' height='2mm'/></svg>", 10, 10},
    };
    for (const auto& row : rows) {
        folder_.write("page.svg", row.drawing);
        ASSERT_EQ(run("preview page.svg page.png --page --size 80"), 0) << folder_.read(".err");
        QImage expected(80, 40, QImage::Format_RGB32);
        expected.fill(Qt::white);
        for (int x = 0; x < 20; ++x)
            for (int y = 0; y < 20; ++y) expected.setPixelColor(row.left + x, row.top + y, Qt::black);
        EXPECT_EQ(picture("page.png").convertToFormat(QImage::Format_RGB32), expected) << row.drawing;
    }
    folder_.write("page.svg", rows[0].drawing);
    ASSERT_EQ(run("import page.svg page.json") + run("preview page.json page.png --page --size 80"), 0);
    EXPECT_EQ(picture("page.png").pixelColor(15, 5), QColor(Qt::black));
    folder_.write("page.svg", "<svg><path d='M1,1 H3 V3 H1 z'/></svg>");
    EXPECT_EQ(run("import page.svg page.json") + run("preview page.json page.png --page"), 1);
    EXPECT_NE(folder_.read(".err").find("neither a view box nor a size"), std::string::npos);
}

TEST_F(ImageCommands, tileAndSample) {
    ASSERT_EQ(run("tile half.svg 8 0 0 tile.png --threads 4"), 0) << folder_.read(".err");
    const QImage png = picture("tile.png");
    EXPECT_EQ(png.size(), QSize(256, 171));
    EXPECT_EQ(png.pixel(20, 30), qRgba(0x20, 0x40, 0x60, 0xFF));
    EXPECT_EQ(qAlpha(png.pixel(200, 30)), 0);

    ASSERT_EQ(run("tile half.svg 8 0 0 tile.rgba32f"), 0) << folder_.read(".err");
    const std::string raw = folder_.read("tile.rgba32f");
    ASSERT_EQ(raw.size(), 256U * 171 * 16);
    float pixel[4];
    std::memcpy(pixel, raw.data() + size_t{30 * 256 + 20} * 16, sizeof pixel);
    EXPECT_EQ(pixel[0], 32 / 255.0F);
    EXPECT_EQ(pixel[3], 1.0F);

    ASSERT_EQ(run("sample half.svg 8 20 30"), 0) << folder_.read(".err");
    EXPECT_EQ(folder_.read(".out"), "0.125490203 0.250980407 0.376470596 1\n");
    EXPECT_EQ(folder_.read(".err"), "");
}

TEST_F(ImageCommands, pyramid) {
    ASSERT_EQ(run("pyramid half.svg out --max-level 10 --threads 3"), 0) << folder_.read(".err");
    EXPECT_EQ(folder_.read(".out").rfind("half.svg: 25 tiles written, 0 kept, ", 0), 0U)
        << folder_.read(".out");
    EXPECT_PRED_FORMAT2(testing::IsSubstring, " -> out/index.html\n", folder_.read(".out"));
    EXPECT_NE(folder_.read("out/pyramid.dzi").find(R"(<Size Width="1024" Height="683"/>)"),
              std::string::npos);
    EXPECT_NE(folder_.read("out/index.html").find("[512, 342], [1024, 683]]"), std::string::npos);
    const QImage inner = picture("out/pyramid_files/10/1_1.png");
    EXPECT_EQ(inner.size(), QSize(256, 256));
    EXPECT_EQ(inner.pixel(255, 255), qRgba(0x20, 0x40, 0x60, 0xFF));
    EXPECT_EQ(picture("out/pyramid_files/10/3_2.png").size(), QSize(256, 171));
    const QImage small = picture("out/pyramid_files/6/0_0.png");  // two tiles of the image
    EXPECT_EQ(small.size(), QSize(64, 43));
    EXPECT_EQ(small.pixel(31, 40), qRgba(0x20, 0x40, 0x60, 0xFF));
    EXPECT_EQ(qAlpha(small.pixel(50, 40)), 0);

    // What is there is kept, though the drawing's time is new; what is missing is drawn, and what was there
    // before.
    const auto began = std::filesystem::last_write_time(folder_ / "out/pyramid_files/drawing.sha256");
    std::filesystem::last_write_time(folder_ / "half.svg", began + std::chrono::hours(1));
    std::filesystem::remove(folder_ / "out/pyramid_files/10/1_1.png");
    std::filesystem::last_write_time(folder_ / "out/pyramid_files/9/0_0.png", began - std::chrono::hours(1));
    ASSERT_EQ(run("pyramid half.svg out --max-level 10"), 0);
    EXPECT_PRED_FORMAT2(testing::IsSubstring, "2 tiles written, 23 kept", folder_.read(".out"));
    EXPECT_EQ(picture("out/pyramid_files/10/1_1.png"), inner);
}

// Tiles of another drawing are no tiles of this one, however old this one is.
TEST_F(ImageCommands, pyramidOfAnotherDrawing) {
    const auto other = folder_.write("other.svg",
                                     "<svg xmlns='http://www.w3.org/2000/svg' width='300' height='200'><path "
                                     "d='M0 0H300V200z' fill='#00ff00'/></svg>");
    std::filesystem::last_write_time(other, std::filesystem::last_write_time(other) - std::chrono::hours(1));
    ASSERT_EQ(run("pyramid half.svg out --max-level 8"), 0) << folder_.read(".err");
    ASSERT_EQ(run("pyramid other.svg out --max-level 7"), 0) << folder_.read(".err");
    EXPECT_PRED_FORMAT2(testing::IsSubstring, "8 tiles written, 0 kept", folder_.read(".out"));
    // The first drawing's tile of the finest level is still there, and not taken for the second one's.
    ASSERT_EQ(run("pyramid other.svg out --max-level 8"), 0) << folder_.read(".err");
    EXPECT_PRED_FORMAT2(testing::IsSubstring, "1 tiles written, 8 kept", folder_.read(".out"));
    const QImage tile = picture("out/pyramid_files/8/0_0.png");
    EXPECT_EQ(tile.pixel(200, 100), qRgba(0, 0xFF, 0, 0xFF));

    // Qt's writer makes the same picture of it; ours is compressed, too.
    ASSERT_EQ(run("tile other.svg 8 0 0 tile.png"), 0) << folder_.read(".err");
    EXPECT_EQ(tile, picture("tile.png"));
    EXPECT_LT(folder_.read("out/pyramid_files/8/0_0.png").size(), 8192U);
}

// The image does not serve all of the small levels of such a document.
TEST_F(ImageCommands, pyramidOfALongDrawing) {
    ASSERT_EQ(run("pyramid long.svg out --max-level 9"), 0) << folder_.read(".err");
    for (int level = 0; level <= 8; ++level) {
        const QImage tile = picture("out/pyramid_files/" + std::to_string(level) + "/0_0.png");
        ASSERT_EQ(tile.size(), QSize(1, 1 << level)) << level;
        EXPECT_GT(qAlpha(tile.pixel(0, tile.height() - 1)), 0) << level;
    }
}
