// The commands that write drawings, run as programs with the module: exit status, the line on stderr, and
// what stands at the output's name afterwards.
#include <fnmatch.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tests/common/ProgramRun.h"
#include "tests/common/SceneText.h"

namespace {

constexpr char kWarning[] = ": SVG sub-paths are output as individual paths.\n";

std::string flatMesh(const std::string& points) {
    return R"({"type": "mesh", "name": "Flat.mesh", "points": [)" + points +
           R"(], "polygons": [{"type": "LINE", "vertices": [0, 1, 2]}]})";
}
const std::string kFlat = "[0,0,0], [10,0,0], [10,10,0]";
const std::string kTilted = "[0,0,0], [10,0,1], [10,10,0]";

class SaveCommands : public ::testing::Test {
  protected:
    SaveCommands() {
        folder_.write("good.json", document(flatMesh(kFlat)));
        folder_.write("none.json", document(R"({"type": "light", "name": "Sun"})"));
        folder_.write("tilted.json", document(flatMesh(kFlat) + "," + flatMesh(kTilted)));
        folder_.write("flat-last.json", document(flatMesh(kTilted) + "," + flatMesh(kFlat)));
        folder_.write("kept.svg", "kept");
        folder_.write("good.svg", "<svg><path id='p' d='M0,0 L9,0 L9,9'/></svg>");
        folder_.write("point.svg", "<svg><line x1='1' y1='1' x2='2' y2='2'/></svg>");
        // The groups inside definitions are numbered but not recorded, so that the inner one has no parent.
        folder_.write("groups-in-defs.svg", "<svg><defs><g><g/></g></defs><path d='M0,0 L9,0 L9,9'/></svg>");
        std::filesystem::create_directory(folder_ / "folder");
    }

    int run(const std::string& arguments) { return tzhost::runProgram(folder_, arguments); }

    TestFolder folder_;
};

TEST_F(SaveCommands, refuseAndLeaveWhatWasThere) {
    tzhost::expectRefusals(folder_, "export/refused-commands.txt");
}

TEST_F(SaveCommands, write) {
    const std::string triangle =
        "<svg* viewBox=\"-1 -1 11 11\"*>\n<g id=\"Flat\">\n<polyline*points=\"0,10 10,10 10,0 \"*";
    const struct {
        const char* arguments;
        std::string document;  // what stands behind the comment
    } rows[] = {
        {"export good.json kept.svg", triangle},
        {"export good.json kept.svg --prepare", triangle},
        {"export flat-last.json kept.svg", triangle},
        {"export none.json kept.svg",
         "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\"/>\n"},
        {"roundtrip good.svg kept.svg", "<svg viewBox=\"*>\n<path*d=\"M0,0 C*\"*/>\n</svg>\n"},
    };
    for (const auto& row : rows) {
        folder_.write("kept.svg", "kept");
        EXPECT_EQ(0, run(row.arguments)) << row.arguments;
        std::istringstream words(row.arguments);
        std::string input;
        words >> input >> input;
        EXPECT_EQ("warning: " + input + kWarning, folder_.read(".err")) << row.arguments;
        const std::string file = folder_.read("kept.svg");
        const std::string head = "<?xml version=\"1.0\"?>\n<!-- SVG file output by VANTO -->\n";
        EXPECT_EQ(head, file.substr(0, head.size())) << row.arguments;
        EXPECT_EQ(0,
                  fnmatch(row.document.c_str(), file.substr(std::min(head.size(), file.size())).c_str(), 0))
            << row.arguments << ": " << file;
    }
}

// A round trip is an import and an export, and its own output comes back the same but for what is in each
// round: a polygon's closing point becomes a point.
TEST_F(SaveCommands, roundTripsAgain) {
    folder_.write("drawing.svg",
                  "<!DOCTYPE svg [<!NOTATION n SYSTEM 'x'>]>\n"
                  "<svg xmlns='http://www.w3.org/2000/svg' version='1.1'>"
                  "<defs><linearGradient id='a'/></defs><g id='outer'><g id='inner' fill='url(#a)'>"
                  "<path d='M0,0 H9 V9 Z M2,2 L3,3 2,3 z' stroke='#102030'/><line x2='5' y2='9'/></g>"
                  "<circle cx='4' cy='4' r='2' style='fill:red'/></g></svg>");
    ASSERT_EQ(0, run("import drawing.svg scene.json --log import.log"));
    ASSERT_EQ(0, run("export scene.json exported.svg --log export.log"));
    ASSERT_EQ(0, run("roundtrip drawing.svg first.svg --log roundtrip.log"));
    EXPECT_EQ(folder_.read("exported.svg"), folder_.read("first.svg"));
    EXPECT_NE("", folder_.read("import.log"));
    EXPECT_EQ(folder_.read("import.log"), folder_.read("roundtrip.log"));
    EXPECT_EQ("", folder_.read("export.log"));
    EXPECT_TRUE(std::filesystem::exists(folder_ / "export.log"));

    ASSERT_EQ(0, run("roundtrip first.svg second.svg"));
    ASSERT_EQ(0, run("roundtrip second.svg third.svg"));
    EXPECT_EQ(folder_.read("second.svg"), folder_.read("third.svg"));

    folder_.write("polygon.svg", "<svg><polygon points='0,0 9,0 9,9'/></svg>");
    ASSERT_EQ(0, run("roundtrip polygon.svg first.svg"));
    ASSERT_EQ(0, run("roundtrip first.svg second.svg"));
    EXPECT_NE(std::string::npos, folder_.read("first.svg").find("points=\"0,0 9,0 9,9 0,0 \""));
    EXPECT_NE(std::string::npos, folder_.read("second.svg").find("points=\"0,0 9,0 9,9 0,0 0,0 \""));
}

}  // namespace
