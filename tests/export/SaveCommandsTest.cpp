// The commands that write drawings, run as programs with the module: exit status, the line on stderr, and
// what stands at the output's name afterwards.
#include <fnmatch.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tests/host/ProgramRun.h"

namespace {

constexpr char kWarning[] = "warning: SVG sub-paths are output as individual paths.\n";

// A scene file of meshes; a mesh of points, polygons and, when there are any, channels of the package.
std::string scene(const std::string& meshes) {
    return R"({"format": "tzscene", "version": 1, "items": [)" + meshes + "]}";
}
std::string mesh(const std::string& points, const std::string& channels = {}) {
    const std::string package =
        channels.empty() ? "" : R"("packages": ["svgloader.package"], "channels": {)" + channels + "}, ";
    return R"({"type": "mesh", "name": "Flat.mesh", )" + package + R"("points": [)" + points +
           R"(], "polygons": [{"type": "LINE", "vertices": [0, 1, 2]}]})";
}
const std::string kFlat = "[0,0,0], [10,0,0], [10,10,0]";
const std::string kTilted = "[0,0,0], [10,0,1], [10,10,0]";

class SaveCommands : public ::testing::Test {
  protected:
    SaveCommands() {
        folder_.write("good.json", scene(mesh(kFlat)));
        folder_.write("none.json", scene(R"({"type": "light", "name": "Sun"})"));
        folder_.write("tilted.json", scene(mesh(kFlat) + "," + mesh(kTilted)));
        folder_.write("flat-last.json", scene(mesh(kTilted) + "," + mesh(kFlat)));
        folder_.write("line.json", scene(mesh("[0,0,0], [1,1,0], [2,2,0]")));
        for (const std::string name :
             {"svgrootdef", "svgdefs", "clipdefs", "groupdefs", "svgillustratorcdata"})
            folder_.write(name + ".json", scene(mesh(kFlat, "\"" + name + "\": \"<g>\"")));
        folder_.write("text.json", "no scene");
        folder_.write("key.json", scene(R"({"type": "mesh", "colour": 1})"));
        folder_.write("vertex.json", scene(mesh("[0,0,0], [10,0,0]")));
        folder_.write("kept.svg", "kept");
        folder_.write("good.svg", "<svg><path id='p' d='M0,0 L9,0 L9,9'/></svg>");
        folder_.write("point.svg", "<svg><line x1='1' y1='1' x2='2' y2='2'/></svg>");
        folder_.write("text.svg", "no drawing");
        folder_.write("broken.svg", "<svg><path d='M0,0 L9'/></svg>");
        // The groups inside definitions are numbered but not recorded, so that the inner one has no parent.
        folder_.write("groups-in-defs.svg", "<svg><defs><g><g/></g></defs><path d='M0,0 L9,0 L9,9'/></svg>");
        std::filesystem::create_directory(folder_ / "folder");
    }

    int run(const std::string& arguments) { return tzhost::runProgram(folder_, arguments); }

    TestFolder folder_;
};

TEST_F(SaveCommands, refuseAndLeaveWhatWasThere) {
    struct Row {
        const char* arguments;
        int status;
        const char* line;
    };
    const Row rows[] = {
        {"export good.json", 2, "OUT.svg is required*"},
        {"export missing.json kept.svg", 1, "missing.json: open: 0x80000004 *"},
        {"export folder kept.svg", 1, "folder: open: 0x80000000 *"},
        {"export text.json kept.svg", 1, "text.json: read: 0x80000002 *"},
        {"export key.json kept.svg", 1, "key.json: read: 0x80000002 *\"colour\"*"},
        {"export vertex.json kept.svg", 1, "vertex.json: read: 0x80000002 *"},
        {"export tilted.json kept.svg", 1, "kept.svg: save: 0x80000000 (failed)"},
        {"export tilted.json new.svg", 1, "new.svg: save: 0x80000000 (failed)"},
        {"export tilted.json kept.svg --prepare", 1, "kept.svg: save: 0x80000000 (failed)"},
        {"export line.json kept.svg", 1, "kept.svg: save: 0x80000000 (failed)"},
        {"export svgrootdef.json kept.svg", 1, "kept.svg: save: 0x80000000 (failed)"},
        {"export svgdefs.json kept.svg", 1, "kept.svg: save: 0x80000000 (failed)"},
        {"export clipdefs.json kept.svg", 1, "kept.svg: save: 0x80000000 (failed)"},
        {"export groupdefs.json kept.svg", 1, "kept.svg: save: 0x80000000 (failed)"},
        {"export svgillustratorcdata.json new.svg", 1, "new.svg: save: 0x80000000 (failed)"},
        {"export good.json nowhere/new.svg", 1, "nowhere/new.svg: save: 0x80000004 *"},
        {"export good.json folder", 1, "folder: save: 0x80000000 (Is a directory)"},
        {"export good.json /dev/full", 1, "/dev/full: save: 0x80000000 *"},
        {"export good.json new.svg --log nowhere/log", 1, "nowhere/log: write log: 0x80000004 *"},
        {"roundtrip good.svg", 2, "OUT.svg is required*"},
        {"roundtrip missing.svg kept.svg --log log", 1, "missing.svg: open: 0x80000004 *"},
        {"roundtrip text.svg kept.svg", 1, "text.svg: recognise: 0x80000005 (not recognised)"},
        {"roundtrip broken.svg kept.svg", 1, "broken.svg: load: 0x80000000 (failed)"},
        {"roundtrip point.svg kept.svg", 1, "kept.svg: save: 0x80000000 (failed)"},
        {"roundtrip groups-in-defs.svg new.svg", 1, "new.svg: save: 0x80000000 (failed)"},
        {"roundtrip good.svg nowhere/new.svg", 1, "nowhere/new.svg: save: 0x80000004 *"},
        {"roundtrip good.svg new.svg --log /dev/full", 1, "/dev/full: write log: 0x80000000 *"},
        {"roundtrip good.svg /dev/full", 1, "/dev/full: save: 0x80000000 *"},
    };
    const std::vector<std::string> before = folder_.names();
    for (const Row& row : rows) {
        EXPECT_EQ(row.status, run(row.arguments)) << row.arguments;
        std::istringstream lines(folder_.read(".err"));
        std::vector<std::string> errors;
        for (std::string line; std::getline(lines, line);) {
            if (line + "\n" != kWarning) errors.push_back(line);
        }
        ASSERT_EQ(1U, errors.size()) << row.arguments;
        EXPECT_EQ(0, fnmatch(("tzhost: " + std::string(row.line)).c_str(), errors[0].c_str(), 0))
            << row.arguments << ": " << errors[0];
        EXPECT_EQ("", folder_.read(".out")) << row.arguments;
        std::filesystem::remove(folder_ / ".err");
        std::filesystem::remove(folder_ / ".out");
        EXPECT_EQ(before, folder_.names()) << row.arguments;
        EXPECT_EQ("kept", folder_.read("kept.svg")) << row.arguments;
    }
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
        {"export none.json kept.svg", "<svg*xmlns*/>\n"},
        {"roundtrip good.svg kept.svg", "<svg viewBox=\"*>\n<path*d=\"M0,0 C*\"*/>\n</svg>\n"},
    };
    for (const auto& row : rows) {
        folder_.write("kept.svg", "kept");
        EXPECT_EQ(0, run(row.arguments)) << row.arguments;
        EXPECT_EQ(kWarning, folder_.read(".err")) << row.arguments;
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
