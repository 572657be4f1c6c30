// Many files by one command, with the probe module, which does to a file's process what the file says.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>

#include "tests/common/ProgramRun.h"

namespace tzhost {
namespace {

class Batch : public ::testing::Test {
  protected:
    Batch() {
        for (const char* name : {"a", "m", "z"})
            folder_.write(name + std::string(".probe"), "probe\ntriangle\n");
        folder_.write("b.probe", "probe\ntriangle\nfail\n");
        folder_.write("c.probe", "probe\ncrash\n");
    }
    int run(const std::string& arguments) {
        return runProgram(folder_, "--module '" PROBE_FOLDER "/probe.so' " + arguments);
    }
    // The files of the folder "out"; one that is half written would be among them.
    std::vector<std::string> written() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_ / "out"))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }
    // What was printed, without the seconds.
    std::string printed() const {
        return std::regex_replace(folder_.read(".out"), std::regex("[0-9]+[.][0-9]+ s"), "s");
    }

    TestFolder folder_;
};

TEST_F(Batch, doesTheGoodOnesInTheirOrder) {
    EXPECT_EQ(0, run("import a.probe a.json"));
    for (const char* const jobs : {"1", "3"}) {
        std::filesystem::remove_all(folder_ / "out");
        EXPECT_EQ(1,
                  run("import a.probe b.probe c.probe none.probe m.probe z.probe -o out --log out --jobs " +
                      std::string(jobs)));
        EXPECT_EQ(
            (std::vector<std::string>{"a.json", "a.log", "b.log", "m.json", "m.log", "z.json", "z.log"}),
            written());
        EXPECT_EQ(folder_.read("a.json"), folder_.read("out/a.json"));
        EXPECT_EQ("triangle\n", folder_.read("out/b.log"));
        EXPECT_EQ(
            "a.probe: 1 shapes, 1 polygons, 3 points, s -> out/a.json\n"
            "m.probe: 1 shapes, 1 polygons, 3 points, s -> out/m.json\n"
            "z.probe: 1 shapes, 1 polygons, 3 points, s -> out/z.json\n"
            "import: 3 done, 3 failed, s -> out\n",
            printed());
        EXPECT_EQ(
            "tzhost: b.probe: load: 0x80000000 (failed)\n"
            "tzhost: c.probe: import: 0x80000000 (its process was ended by a signal: Killed)\n"
            "tzhost: none.probe: open: 0x80000004 (No such file or directory)\n",
            folder_.read(".err"));
    }
}

TEST_F(Batch, leavesOutWhatIsUpToDate) {
    EXPECT_EQ(0, run("import a.probe m.probe -o out --update"));
    EXPECT_EQ(0, run("import a.probe m.probe z.probe -o out --update"));
    EXPECT_EQ(
        "z.probe: 1 shapes, 1 polygons, 3 points, s -> out/z.json\nimport: 1 done, 2 up to date, s -> "
        "out\n",
        printed());
    const auto later = std::filesystem::last_write_time(folder_ / "out/m.json") + std::chrono::seconds(1);
    std::filesystem::last_write_time(folder_ / "m.probe", later);
    EXPECT_EQ(0, run("import a.probe m.probe z.probe -o out --update | tail -n 1"));
    EXPECT_EQ("import: 1 done, 2 up to date, s -> out\n", printed());
}

TEST_F(Batch, endsAtOnceWithoutItsModule) {
    EXPECT_EQ(1, runProgram(folder_, "--module none.so import a.probe b.probe m.probe -o out -j 1"));
    EXPECT_EQ("import: 0 done, 1 failed, 2 not done, s -> out\n", printed());
    EXPECT_EQ("tzhost: none.so: load module: 0x80000004 (no such module file)\n", folder_.read(".err"));
}

// Files that are done stay, and of the others nothing is there.
TEST_F(Batch, isInterrupted) {
    std::string files;
    for (int i = 0; i < 40; ++i) {
        const std::string name = std::to_string(i) + ".probe ";
        folder_.write(name.substr(0, name.size() - 1), "probe\ntriangle\nwait 250\n");
        files += name;
    }
    for (const auto& [signal, status] : {std::pair("INT", 130), std::pair("TERM", 143)}) {
        std::filesystem::remove_all(folder_ / "out");
        EXPECT_EQ(status,
                  run("import " + files + "-o out -j 2 & sleep 1.5; kill -" + signal + " $!; wait $!"));
        EXPECT_EQ("tzhost: interrupted\n", folder_.read(".err"));
        const std::vector<std::string> names = written();
        EXPECT_LT(0U, names.size());
        EXPECT_GT(40U, names.size());
        for (const std::string& name : names) EXPECT_EQ(".json", name.substr(name.find('.'))) << name;
        EXPECT_EQ(folder_.read("out/" + names.front()).size(),
                  folder_.read("out/" + names.back()).size() - names.back().size() + names.front().size());
    }
}

}  // namespace
}  // namespace tzhost
