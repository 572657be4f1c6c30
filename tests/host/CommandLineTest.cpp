// The program: what it prints, what it leaves behind, how it exits. Every row is a command line for a shell
// in a folder with a few files; the module is the probe.
#include <fcntl.h>
#include <fnmatch.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <functional>
#include <new>
#include <stdexcept>

#include "host/core/OperationError.h"
#include "tests/common/ProgramRun.h"

using namespace tzhost;

namespace {

// Whether a text is one line and fits the pattern of a shell.
bool matches(const std::string& text, const std::string& pattern) {
    return fnmatch(pattern.c_str(), text.c_str(), 0) == 0 && std::count(text.begin(), text.end(), '\n') == 1;
}

class CommandLineTest : public ::testing::Test {
  protected:
    CommandLineTest() {
        folder_.write("good.probe", "probe\ntriangle\nlog\n");
        folder_.write("late.probe", "probe\nwait 400\n");
        folder_.write("bad.probe", "probe\ntriangle\nfail\n");
        folder_.write("plain.txt", "plain\n");
        folder_.write("n\xE4me.probe", "probe\n");
        folder_.write("scene.json", R"({"format": "tzscene", "version": 1, "items": [{"colour": 1}]})");
        folder_.write("kept.json", "kept");
        std::filesystem::create_directory(folder_ / "folder");
    }

    int run(const std::string& arguments, const std::string& module = PROBE_FOLDER "/probe.so") {
        return tzhost::runProgram(folder_, "--module '" + module + "' " + arguments);
    }

    TestFolder folder_;
};

TEST_F(CommandLineTest, RefusesInOneLine) {
    expectRefusals(folder_, "host/refused-commands.txt", "--module '" PROBE_FOLDER "/probe.so' ");
    EXPECT_EQ("kept", folder_.read("kept.json"));
}

TEST_F(CommandLineTest, ImportsDrawsAndListsServers) {
    EXPECT_EQ(0, run("import good.probe kept.json --log log.txt")) << folder_.read(".err");
    EXPECT_TRUE(matches(folder_.read(".out"),
                        "good.probe: 1 shapes, 1 polygons, 3 points, [0-9].[0-9][0-9][0-9] s -> kept.json\n"))
        << folder_.read(".out");
    EXPECT_EQ("triangle\nended\nnot ended\nan error\n", folder_.read("log.txt"));
    EXPECT_NE(std::string::npos, folder_.read("kept.json").find(R"("channels": {)"));

    EXPECT_EQ(0, run("preview kept.json from-scene.png --size 64")) << folder_.read(".err");
    EXPECT_EQ(0, run("preview good.probe from-drawing.png --size 64")) << folder_.read(".err");
    EXPECT_EQ("\x89PNG", folder_.read("from-scene.png").substr(0, 4));
    EXPECT_EQ(folder_.read("from-scene.png"), folder_.read("from-drawing.png"));

    EXPECT_EQ(0, run("servers"));
    EXPECT_EQ(
        "Probe_SceneLoader\n  interfaces: tz.sceneLoader/1 tz.server.tags/1\n  loader.dosPattern: *.probe\n"
        "probe.package\n  interfaces: tz.package/1 tz.packageInstances/1\n",
        folder_.read(".out"));
    EXPECT_EQ(0, run("servers --json | tr -d ' \\n'"));
    EXPECT_EQ(
        R"({"servers":[{"name":"Probe_SceneLoader","interfaces":["tz.sceneLoader/1","tz.server.tags/1"],)"
        R"("tags":[["loader.dosPattern","*.probe"]]},{"name":"probe.package",)"
        R"("interfaces":["tz.package/1","tz.packageInstances/1"],"tags":[]}]})",
        folder_.read(".out"));
    EXPECT_EQ("", folder_.read(".err"));
    EXPECT_EQ(0, run("import --help"));
    EXPECT_NE(std::string::npos, folder_.read(".out").find("Example"));
}

TEST_F(CommandLineTest, KeepsTheLogOfARefusedImport) {
    EXPECT_EQ(1, run("import bad.probe out.json --log log.txt"));
    EXPECT_EQ("triangle\n", folder_.read("log.txt"));
}

TEST_F(CommandLineTest, CancelsAtTheFirstInterrupt) {
    folder_.write("interrupted.probe", "probe\ntriangle\ninterrupt\ntriangle\n");
    EXPECT_EQ(130, run("import interrupted.probe out.json"));
    EXPECT_EQ("tzhost: interrupted.probe: load: 0x80000006 (cancelled)\n", folder_.read(".err"));
}

TEST_F(CommandLineTest, WarnsOfWhatTheModuleKeeps) {
    folder_.write("leak.probe", "probe\nleak\nthread\n");
    EXPECT_EQ(0, run("import leak.probe out.json"));
    EXPECT_EQ(
        "warning: the module called ITzItem::setTag off the host thread, 1 times\n"
        "warning: at unload: item: 1 reference not released\n",
        folder_.read(".err"));
}

// A terminal for the program to write to, and what it has written there.
class Terminal {
  public:
    Terminal() : descriptor_(posix_openpt(O_RDWR | O_NOCTTY)) {
        std::array<char, 64> name{};
        if (grantpt(descriptor_) == 0 && unlockpt(descriptor_) == 0 &&
            ptsname_r(descriptor_, name.data(), name.size()) == 0) {
            name_ = name.data();
        }
        // Open all the while, so that nothing is lost when the program lets go.
        held_ = open(name_.c_str(), O_RDWR | O_NOCTTY);
    }
    ~Terminal() {
        close(held_);
        close(descriptor_);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    const std::string& name() const { return name_; }

    // What was written comes in pieces, the last of them some time after the writer is gone.
    std::string take() const {
        std::string all;
        std::array<char, 4096> bytes{};
        for (pollfd ready{descriptor_, POLLIN, 0}; poll(&ready, 1, 300) > 0;)
            all.append(bytes.data(), static_cast<size_t>(read(descriptor_, bytes.data(), bytes.size())));
        return all;
    }

  private:
    int descriptor_;
    int held_;
    std::string name_;
};

TEST_F(CommandLineTest, ShowsLongWork) {
    // Longer than a moment (0.5 s on a terminal, 2 s elsewhere) by so much that a busy machine is in time.
    folder_.write("slow.probe", "probe\nwait 1500\ntriangle\n");
    folder_.write("slower.probe", "probe\nwait 3500\ntriangle\n");
    folder_.write("empty.json", R"({"format": "tzscene", "version": 1, "items": []})");
    ASSERT_EQ(0, mkfifo((folder_ / "pipe.json").c_str(), 0600));
    const Terminal terminal;
    const std::string toTerminal = " 2>" + terminal.name();
    // The bar may have been brought up to date once more before it was taken away.
    const auto expectBar = [&](const std::string& first) {
        const std::string shown = terminal.take();
        const std::string end = "\r\x1B[K";
        EXPECT_EQ(first, shown.substr(0, first.size()));
        EXPECT_EQ(end, shown.substr(shown.size() - std::min(shown.size(), end.size())));
    };

    // Before the module makes a step there is nothing to count.
    EXPECT_EQ(0, run("import slow.probe out.json" + toTerminal));
    expectBar(
        "\rimporting slow.probe ..."
        "\rimporting slow.probe [####################....................]  50%");
    EXPECT_TRUE(matches(folder_.read(".out"), "slow.probe: 1 shapes, *"));

    // Nobody knows how much a pipe brings.
    EXPECT_EQ(0, run("preview pipe.json out.png" + toTerminal +
                     " | (sleep 1.5; timeout 20 sh -c 'cat empty.json >pipe.json')"));
    expectBar("\rreading pipe.json ...\rreading pipe.json ...");

    EXPECT_EQ(0, run("import slower.probe out.json"));
    EXPECT_EQ("importing slower.probe ...\n", folder_.read(".err"));

    EXPECT_EQ(0, run("import good.probe out.json" + toTerminal));
    EXPECT_EQ("", terminal.take());
}

// The reader of a pipe presses it when the program waits for room in the pipe: the rest is not written.
TEST_F(CommandLineTest, StopsWritingAtAnInterrupt) {
    std::string commands = "probe\n";
    for (int i = 0; i < 20'000; ++i) commands += "triangle\n";
    folder_.write("large.probe", commands);
    ASSERT_EQ(0, mkfifo((folder_ / "pipe.json").c_str(), 0600));
    EXPECT_EQ(130, run("import large.probe pipe.json & exec 3<pipe.json; head -c 9 <&3 >read; kill -INT $!; "
                       "cat <&3 >read; wait $!"));
    EXPECT_EQ("tzhost: pipe.json: write: 0x80000006 (cancelled)\n", folder_.read(".err"));
    EXPECT_LT(folder_.read("read").size(), 500'000U);
    EXPECT_EQ(0, run("import large.probe whole.json"));
    EXPECT_GT(folder_.read("whole.json").size(), 1'000'000U);
}

// What is opened first gets the number of a closed stream.
TEST_F(CommandLineTest, KeepsItsLinesOutOfFiles) {
    folder_.write("slower.probe", "probe\nwait 2200\ntriangle\n");
    EXPECT_EQ(0, run("import slower.probe out.json --log log.txt 2>&-"));
    EXPECT_EQ("triangle\n", folder_.read("log.txt"));
}

// Whatever is thrown in a step becomes a line with its file, its step and its code.
TEST(InStep, TellsEveryFailureByItsCode) {
    const struct {
        std::function<void()> work;
        TzResult result;
        const char* line;
    } rows[] = {
        {[] { throw CTzError(kTzCancelled); }, kTzCancelled, "a.svg: load: 0x80000006 (cancelled)"},
        {[] { throw std::bad_alloc(); }, kTzOutOfMemory, "a.svg: load: 0x80000001 (out of memory)"},
        {[] { throw std::runtime_error("the\nreason"); }, kTzFailed,
         "a.svg: load: 0x80000000 (the\\x0Areason)"},
        {[] { throw 1; }, kTzFailed, "a.svg: load: 0x80000000 (failed)"},
        {[] { throw OperationError("b.svg", "open", kTzNotFound, "gone"); }, kTzNotFound,
         "b.svg: open: 0x80000004 (gone)"},
    };
    for (const auto& row : rows) {
        try {
            inStep("a.svg", "load", row.work);
            ADD_FAILURE() << row.line << ": not thrown";
        } catch (const OperationError& error) {
            EXPECT_STREQ(row.line, error.what());
            EXPECT_EQ(row.result, error.result()) << row.line;
        }
    }
}

}  // namespace
