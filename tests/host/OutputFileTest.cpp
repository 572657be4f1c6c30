// Output files: what is there before, meanwhile and afterwards.
#include "host/io/Files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

#include "host/core/OperationError.h"
#include "tests/common/TestFolder.h"

using namespace tzhost;

namespace {

using Names = std::vector<std::string>;

TEST(OutputFile, ReplacesOnlyWhenCommitted) {
    const TestFolder folder;
    folder.write("out.txt", "before");
    chmod((folder / "out.txt").c_str(), 0640);
    {
        OutputFile abandoned(folder / "out.txt", "write");
        abandoned.write("half of i");
        EXPECT_EQ(2U, folder.names().size());
    }
    EXPECT_EQ(Names{"out.txt"}, folder.names());
    EXPECT_EQ("before", folder.read("out.txt"));

    OutputFile out(folder / "out.txt", "write");
    const std::string large(200'000, 'x');
    out.write(large);
    EXPECT_EQ("before", folder.read("out.txt"));
    out.commit();
    EXPECT_EQ(large, folder.read("out.txt"));
    EXPECT_EQ(Names{"out.txt"}, folder.names());
    struct stat mode {};
    ASSERT_EQ(0, stat((folder / "out.txt").c_str(), &mode));
    EXPECT_EQ(0640U, mode.st_mode & 0777U);
}

TEST(OutputFile, ReplacesWhatALinkLeadsTo) {
    const TestFolder folder;
    folder.write("real.txt", "before");
    std::filesystem::create_symlink("real.txt", folder / "link.txt");
    OutputFile out(folder / "link.txt", "write");
    out.write("after");
    out.commit();
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.txt"));
    EXPECT_EQ("after", folder.read("real.txt"));
}

TEST(OutputFile, TakesAFileWrittenByOthers) {
    const TestFolder folder;
    OutputFile out(folder / "out.svg", "save");
    EXPECT_EQ(".svg", std::filesystem::path(out.temporaryName()).extension());
    std::ofstream(out.temporaryName()) << "theirs";
    out.commit();
    EXPECT_EQ("theirs", folder.read("out.svg"));
}

}  // namespace
