// The normalizer behind its C entry, and the commands that use it, with the module.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>

#include "host/ImageLoading.h"
#include "host/ModuleLibrary.h"
#include "host/core/OperationError.h"
#include "normalize/tznormalize.h"
#include "tests/common/ProgramRun.h"

namespace tzhost {
namespace {

// The module refuses it: a line break joins two words, and the numbers are run together.
constexpr char kDrawing[] =
    "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"10\" height=\"10\">\n"
    "  <script/>\n"
    "  <path id=\"p\"\n"
    "d=\"M1 1h.5.5v8z\" fill=\"red\"/></svg>\n";

std::string square(const char* color) {
    return std::string("<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'><rect style='fill:") +
           color + "' width='100%' height='8'/></svg>";
}

class NormalizeTest : public ::testing::Test {
  protected:
    int run(const std::string& arguments) { return runProgram(folder_, arguments); }

    TestFolder folder_;
};

TEST_F(NormalizeTest, commands) {
    folder_.write("in.svg", kDrawing);
    EXPECT_EQ(0, run("normalize in.svg out.svg --notes notes.json")) << folder_.read(".err");
    EXPECT_EQ("in.svg:2:3: <script> left-out: a script\n", folder_.read(".err"));
    EXPECT_NE(std::string::npos, folder_.read("notes.json").find("\"column\": 3"));
    const std::string once = folder_.read("out.svg");
    EXPECT_EQ(0, run("normalize out.svg again.svg"));
    EXPECT_EQ(once, folder_.read("again.svg"));
    EXPECT_EQ("", folder_.read(".err"));

    EXPECT_EQ(0, run("import out.svg bare.json"));
    EXPECT_EQ(0, run("import --normalize in.svg scene.json"));
    EXPECT_EQ("in.svg:2:3: <script> left-out: a script\n", folder_.read(".err"));
    EXPECT_NE(std::string::npos, folder_.read("scene.json").find("\"name\": \"in\""));
    EXPECT_EQ(0, run("roundtrip out.svg bare.svg"));
    EXPECT_EQ(0, run("roundtrip in.svg normalized.svg --normalize"));
    EXPECT_EQ(folder_.read("bare.svg"), folder_.read("normalized.svg"));
    for (const char* command : {"preview in.svg a.png --normalize", "image-info in.svg --normalize",
                                "tile in.svg 16 0 0 b.png --normalize", "sample in.svg 0 0 0 --normalize",
                                "pyramid in.svg tiles --max-level 3 --normalize"})
        EXPECT_EQ(0, run(command)) << command << folder_.read(".err");
}

TEST_F(NormalizeTest, refusals) {
    folder_.write("page.html", "<html/>");
    folder_.write("cut.svg", "<svg>\n<g>");
    EXPECT_EQ(1, run("normalize page.html out.svg --notes notes.json"));
    EXPECT_EQ(
        "tzhost: page.html: normalize: 0x80000005 (line 1, column 1: no SVG: its root is the element "
        "\"html\")\n",
        folder_.read(".err"));
    EXPECT_EQ(1, run("import cut.svg out.json --normalize"));
    EXPECT_EQ(0U, folder_.read(".err").find("tzhost: cut.svg: normalize: 0x80000000 (line 2, column "));
    EXPECT_EQ(1, run("normalize missing.svg out.svg"));
    EXPECT_EQ(2, run("import cut.svg out.json --notes notes.json"));
    EXPECT_EQ((std::vector<std::string>{".err", ".out", "cut.svg", "page.html"}), folder_.names());
}

// Pages of broken size are enlarged for images alone.
TEST_F(NormalizeTest, pagesOfBrokenSize) {
    const std::string page =
        "<svg xmlns='http://www.w3.org/2000/svg' width='12.75' height='10.5'><circle r='1'/></svg>";
    folder_.write("in.svg", page);
    EXPECT_EQ(0, run("image-info in.svg --normalize --json"));
    EXPECT_NE(folder_.read(".out").find("\"width\": 1275"), std::string::npos) << folder_.read(".out");
    EXPECT_EQ(0, run("normalize in.svg out.svg"));
    EXPECT_NE(folder_.read("out.svg").find("width=\"12.75\""), std::string::npos);
}

// The image goes with the drawing, keeps the last one that can be read, and leaves nothing behind.
TEST_F(NormalizeTest, imagesFollowTheDrawing) {
    Session session(TZSVG_MODULE);
    const auto file = folder_.write("in.svg", square("red"));
    std::string copy;
    {
        const LoadedImage loaded = loadImage(session.host, Drawing::normalized(file, Purpose::kImage));
        copy = loaded.drawing.readName();
        EXPECT_TRUE(std::ifstream(copy).good());
        // A tile of another level each time: those that are there are kept.
        uint32_t level = 16;
        const auto pixel = [&] {
            loaded.drawing.refresh();
            const std::vector<float> pixels = readPixels(fetchTile(*loaded.tiles, level--, {0, 0}));
            return std::vector<float>(pixels.begin(), pixels.begin() + 3);
        };
        EXPECT_EQ(pixel(), (std::vector<float>{1, 0, 0}));
        folder_.write("in.svg", square("#0f0;stroke:none"));
        EXPECT_EQ(pixel(), (std::vector<float>{0, 1, 0}));
        folder_.write("in.svg", "<svg");
        EXPECT_EQ(pixel(), (std::vector<float>{0, 1, 0}));
        folder_.write("in.svg", square("#00f"));
        EXPECT_EQ(pixel(), (std::vector<float>{0, 0, 1}));
    }
    EXPECT_FALSE(std::ifstream(copy).good());
}

TEST(LibraryEntry, results) {
    TzNormalizeResult result;
    EXPECT_EQ(TZNORMALIZE_OK, tzNormalize(nullptr, kDrawing, sizeof kDrawing - 1, 0, &result));
    EXPECT_EQ(result.documentSize, std::strlen(result.document));
    EXPECT_EQ(result.notesSize, std::strlen(result.notes));
    tzNormalizeFree(&result);
    EXPECT_EQ(result.document, nullptr);
    EXPECT_EQ(TZNORMALIZE_REFUSED, tzNormalize("missing.svg", nullptr, 0, 0, &result));
    EXPECT_EQ(result.document, nullptr);
    EXPECT_NE(std::strstr(result.notes, "\"unreadable\""), nullptr);
    tzNormalizeFree(&result);
    EXPECT_EQ(TZNORMALIZE_FAILED, tzNormalize(nullptr, nullptr, 0, 0, &result));
    EXPECT_EQ(result.notes, nullptr);
    EXPECT_EQ(TZNORMALIZE_FAILED, tzNormalize("a.svg", nullptr, 0, 0, nullptr));
    tzNormalizeFree(nullptr);
}

}  // namespace
}  // namespace tzhost
