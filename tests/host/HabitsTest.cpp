// What a user of a command line takes for granted, with the module that is beside the program: standard
// streams, compressed drawings, several modules, silence.
#include <fnmatch.h>
#include <gtest/gtest.h>

#include "host/commandline/NearestWord.h"
#include "tests/common/ProgramRun.h"

namespace tzhost {
namespace {

class Habits : public ::testing::Test {
  protected:
    Habits() {
        folder_.write("a.svg", kDrawing);
        folder_.write("text.svg", "<svg viewBox='0 0 9 9'><path d='M0,0 L9,9 L0,9'/><text>a</text></svg>");
        folder_.write("good.probe", "probe\ntriangle\n");
    }
    int run(const std::string& line) { return runLine(folder_, line); }
    std::string out() const { return folder_.read(".out"); }
    std::string err() const { return folder_.read(".err"); }

    static constexpr char kDrawing[] = "<svg viewBox='0 0 9 9'><path d='M0,0 L9,9 L0,9' fill='red'/></svg>";
    static constexpr char kProbe[] =
        "$tzhost --module '" PROBE_FOLDER "/probe.so' --module '" TZSVG_MODULE "' ";
    TestFolder folder_;
};

// Each writes to standard output what the command beside it writes to "plain".
TEST_F(Habits, standardStreams) {
    const struct {
        const char* plain;
        const char* streamed;
        const char* told;  // on stderr
    } rows[] = {
        {"$tzhost import a.svg plain.json", "$tzhost import - - <a.svg", "standard input: 1 shapes, 1 *"},
        {"$tzhost import a.svg plain.json", "gzip -c a.svg | $tzhost import - -",
         "standard input: 1 shapes, *"},
        {"$tzhost export scene.json plain.svg", "$tzhost export - - <scene.json",
         "warning: standard input: SVG *"},
        {"$tzhost roundtrip a.svg plain.svg", "$tzhost roundtrip - - <a.svg",
         "warning: standard input: SVG *"},
        {"$tzhost preview a.svg plain.png", "$tzhost preview - - <a.svg", ""},
        {"$tzhost preview a.svg plain.png", "$tzhost preview - - <scene.json", ""},
        {"$tzhost tile a.svg 9 0 0 plain.png", "$tzhost tile - 9 0 0 - <a.svg", ""},
        {"$tzhost normalize text.svg plain.svg", "$tzhost normalize - - <text.svg",
         "standard input:1:50: <text> *"},
        {"$tzhost import a.svg x.json --log plain.log",
         "$tzhost import - /dev/null --log - <a.svg | grep -v shapes", ""},
    };
    ASSERT_EQ(0, run("$tzhost import a.svg scene.json && sed -i 's/\"name\": \"a\"/\"name\": \"standard "
                     "input\"/' scene.json"));
    for (const auto& row : rows) {
        SCOPED_TRACE(row.streamed);
        EXPECT_EQ(0, run(row.plain)) << err();
        EXPECT_EQ(0, run(std::string("rm -f .plain; cat plain.* | sed 's/\"name\": \"a\"/\"name\": "
                                     "\"standard input\"/' >.plain; rm plain.*; ") +
                         row.streamed))
            << err();
        EXPECT_EQ(folder_.read(".plain"), out());
        EXPECT_EQ(0, fnmatch(row.told, err().c_str(), 0)) << err();
    }
    EXPECT_EQ(3, run("$tzhost check --json - <text.svg"));
    EXPECT_NE(std::string::npos, out().find("\"file\": \"standard input\""));
}

TEST_F(Habits, compressedDrawings) {
    ASSERT_EQ(0, run("$tzhost import a.svg a.json; cp a.json plain.json; gzip -c a.svg >a.svgz"));
    EXPECT_EQ(0, run("$tzhost import a.svgz a.json; cmp a.json plain.json")) << out();
    EXPECT_EQ(0, run("head -c -8 a.svgz >cut.svgz; $tzhost roundtrip cut.svgz cut.svg"));
    EXPECT_EQ(
        1, run("head -c 30 a.svgz >broken.svgz; cat a.svg >>broken.svgz; $tzhost import broken.svgz b.json"));
    EXPECT_EQ(0, fnmatch("tzhost: broken.svgz: unpack: 0x80000000 (its gzip compression is broken: *",
                         err().c_str(), 0))
        << err();
    EXPECT_EQ(1, run("head -c 270000000 /dev/zero | gzip -1 >large.svgz; $tzhost import large.svgz b.json"));
    EXPECT_EQ("tzhost: large.svgz: unpack: 0x80000000 (it unpacks to more than 256 MiB)\n", err());
    EXPECT_FALSE(std::filesystem::exists(folder_ / "b.json"));
}

// The first that takes the file reads it; the program's options may stand behind the command.
TEST_F(Habits, severalModules) {
    EXPECT_EQ(0, run(std::string(kProbe) + "import good.probe b.json --quiet && " + kProbe +
                     "import a.svg a.json --quiet"));
    EXPECT_EQ("", out() + err());
    EXPECT_EQ(0, run(std::string(kProbe) + "servers | grep ^[A-Z].*Loader"));
    EXPECT_EQ("Probe_SceneLoader\nSVG_SceneLoader\nSVG_ImageLoader\n", out());
    EXPECT_EQ(1, run("$tzhost --module " TZSVG_MODULE " --module " TZSVG_MODULE " servers"));
}

TEST_F(Habits, formatsAndForce) {
    EXPECT_EQ(0, run("$tzhost preview a.svg a.jpg --size 40 && $tzhost preview a.svg a.PNG && $tzhost "
                     "preview a.svg a"));
    EXPECT_EQ("\xFF\xD8", folder_.read("a.jpg").substr(0, 2));
    EXPECT_EQ(folder_.read("a.PNG"), folder_.read("a"));
    EXPECT_EQ(1, run("ln -s a.svg link.svg; $tzhost roundtrip a.svg link.svg"));
    EXPECT_EQ(kDrawing, folder_.read("a.svg"));
    EXPECT_EQ(0, run("$tzhost roundtrip a.svg link.svg --force --quiet"));
    EXPECT_NE(kDrawing, folder_.read("a.svg"));
    EXPECT_EQ("", err());
}

// Waiting for its input it ends at once; a second signal ends work that has not ended at the first.
TEST_F(Habits, interrupts) {
    ASSERT_EQ(0, run("mkfifo pipe"));
    EXPECT_EQ(130, run("$tzhost import - b.json <pipe & exec 3>pipe; sleep 0.3; kill -INT $!; wait $!"));
    EXPECT_EQ(143, run("$tzhost import - b.json <pipe & exec 3>pipe; sleep 0.3; kill $!; wait $!"));
    EXPECT_EQ("tzhost: interrupted\n", err());
    folder_.write("twice.probe", "probe\ninterrupt twice\n");
    const auto before = folder_.names();
    EXPECT_EQ(130, run(std::string(kProbe) + "import twice.probe b.json --log b.log"));
    EXPECT_EQ(before, folder_.names());
}

TEST(NearestWord, isFewChangesAway) {
    const std::vector<std::string> words = {"import", "export", "tile", "--log"};
    const char* const rows[][2] = {
        {"imprt", "import"}, {"exoprt", "export"}, {"tiel", "tile"}, {"importt", "import"},
        {"--lgo", "--log"},  {"fly", ""},          {"", ""}};
    for (const auto& [typed, meant] : rows) EXPECT_EQ(meant, nearestWord(typed, words)) << typed;
}

}  // namespace
}  // namespace tzhost
