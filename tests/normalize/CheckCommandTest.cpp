// tzhost check, and what import and roundtrip say of a drawing that is refused or loses something.
#include <gtest/gtest.h>

#include "tests/common/ProgramRun.h"
#include "tests/common/TestFolder.h"

namespace tzhost {
namespace {

class CheckCommand : public testing::Test {
  protected:
    CheckCommand() {
        // Its outline fills the page, and it names all that comes back.
        folder_.write("clean.svg",
                      "<svg viewBox='0 0 9 9'><path d='M0 0L9 0L9 9' fill='red' stroke='#000000' "
                      "stroke-width='1'/></svg>");
        folder_.write(
            "losses.svg",
            "<svg viewBox='0 0 9 9'>\n<rect width='9' height='9'/><text>a</text><text>b</text></svg>");
        folder_.write("refused.svg", "<svg>\n <path id='p' d='M.5.5L1 1'/></svg>");
    }
    int run(const std::string& arguments) { return runProgram(folder_, arguments); }
    bool printed(const char* text) { return folder_.read(".out").find(text) != std::string::npos; }

    TestFolder folder_;
};

TEST_F(CheckCommand, status) {
    EXPECT_EQ(0, run("check clean.svg"));
    EXPECT_EQ("clean.svg: clean\n", folder_.read(".out"));
    EXPECT_EQ(3, run("check clean.svg losses.svg"));
    EXPECT_TRUE(printed("losses.svg:2:29: dropped: <text> text is not imported; --normalize: "))
        << folder_.read(".out");
    EXPECT_EQ(1, run("check refused.svg losses.svg"));
    EXPECT_TRUE(printed("refused.svg:2:2: refused: <path id=\"p\"> d: \".5.5\" are numbers"))
        << folder_.read(".out");
    EXPECT_EQ(1, run("check ."));  // all drawings in it
    EXPECT_TRUE(printed("clean.svg: clean\n"));
    EXPECT_EQ(2, run("check"));
    EXPECT_EQ(1, run("check missing.svg"));
    EXPECT_EQ(3, run("check --json losses.svg"));
    EXPECT_TRUE(printed("\"status\": \"losses\""));
    EXPECT_EQ("[", folder_.read(".out").substr(0, 1));
}

TEST_F(CheckCommand, page) {
    EXPECT_EQ(1, run("check . --html page.html"));
    const std::string page = folder_.read("page.html");
    size_t pictures = 0;
    for (size_t at = page.find("<img "); at != std::string::npos; at = page.find("<img ", at + 1)) ++pictures;
    EXPECT_EQ(8U, pictures);  // three of each, but for the way back of the refused one
    EXPECT_EQ(std::string::npos, page.find("{{"));
    EXPECT_NE(std::string::npos, page.find("prefers-color-scheme"));
    for (const char* const outside : {"src=\"http", "href=", "@import"}) {
        EXPECT_EQ(std::string::npos, page.find(outside)) << outside;
    }
}

TEST_F(CheckCommand, importSaysWhy) {
    EXPECT_EQ(1, run("import refused.svg out.json"));
    EXPECT_EQ(
        "tzhost: refused.svg: load: 0x80000000 (failed): line 2, column 2: <path id=\"p\"> d: \".5.5\" are "
        "numbers "
        "without a blank between them; --normalize: numbers are written plainly\n",
        folder_.read(".err"));
    EXPECT_EQ(0, run("import losses.svg out.json"));
    EXPECT_EQ(
        "warning: losses.svg: line 2, column 29: <text> text is not imported (2 of them); --normalize: "
        "becomes "
        "outlines of its fonts, with the words on their group\n",
        folder_.read(".err"));
    EXPECT_EQ(0, run("import clean.svg out.json"));
    EXPECT_EQ("", folder_.read(".err"));
    folder_.write("behind.svg", "<svg><rect width='9' height='9'/></svg><!-- made by hand -->");
    EXPECT_EQ(0, run("import behind.svg out.json"));
    EXPECT_EQ(0U, folder_.read(".err").find("warning: behind.svg: a comment")) << folder_.read(".err");
    EXPECT_EQ(1, run("roundtrip behind.svg out.svg"));
}

}  // namespace
}  // namespace tzhost
