// The text output format of the SDK.
#include "hostsdk/CTzLineFormat.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "tests/common/TestFolder.h"

namespace {

// A format with a separator, as another saver may have.
class CommaFormat : public CTzLineFormat {
  public:
    std::string_view separatorText() const override { return ","; }
};

TEST(LineFormat, writes) {
    const TestFolder folder;
    const std::string file = (folder / "out.txt").native();
    struct Row {
        const char* name;
        std::function<void(CTzLineFormat&)> write;
        const char* text;
    };
    for (const Row& row : std::vector<Row>{
             {"nothing", [](CTzLineFormat&) {}, ""},
             {"break after text, once",
              [](CTzLineFormat& f) { f.writeText("a"), f.lineBreak(false), f.lineBreak(false); }, "a\n"},
             {"forced breaks", [](CTzLineFormat& f) { f.lineBreak(true), f.lineBreak(true); }, "\n\n"},
             {"break at the start", [](CTzLineFormat& f) { f.lineBreak(false); }, ""},
             {"separated values",
              [](CTzLineFormat& f) {
                  f.writeInteger(-7, true), f.writeShortInteger(8, true), f.writeReal(0.5, true);
                  f.writeValue("x", true), f.writeString("y"), f.writeValue("z", false);
                  f.lineBreak(false), f.writeInteger(1, true);
              },
              "-7,8,0.5,x,yz\n1"},
             {"reals",
              [](CTzLineFormat& f) {
                  for (const double value : {123456.0, 1234567.0, 1e-5, 0.1 + 0.2}) f.writeReal(value, true);
              },
              "123456,1.23457e+06,1e-05,0.3"},
             {"quoted", [](CTzLineFormat& f) { f.writeQuoted("say \"a\\b\""); }, "\"say \\\"a\\b\\\"\""},
             {"dropped",
              [](CTzLineFormat& f) {
                  f.setWriting(false), f.writeText("a"), f.lineBreak(true);
                  f.setWriting(true), f.writeText("b");
              },
              "b"},
         }) {
        CommaFormat format;
        ASSERT_TRUE(format.open(file)) << row.name;
        row.write(format);
        EXPECT_FALSE(format.hasError()) << row.name;
        EXPECT_TRUE(format.close()) << row.name;
        EXPECT_EQ(folder.read("out.txt"), row.text) << row.name;
    }
}

TEST(LineFormat, lostOutputIsAnError) {
    const TestFolder folder;
    CTzLineFormat format;
    EXPECT_FALSE(format.open("/nowhere/at/all"));
    EXPECT_TRUE(format.hasError());
    EXPECT_FALSE(format.open(std::string("/dev/null\0x", 11)));

    // A full disk shows when the buffer is brought to the file: at the test, or at the latest on closing.
    ASSERT_TRUE(format.open("/dev/full"));
    format.writeText("a");
    EXPECT_TRUE(format.hasError());
    EXPECT_FALSE(format.close());
    ASSERT_TRUE(format.open("/dev/full"));
    format.writeText("a");
    EXPECT_FALSE(format.close());

    ASSERT_TRUE(format.open((folder / "out.txt").native()));  // starts anew
    EXPECT_FALSE(format.hasError());
    EXPECT_TRUE(format.close());
    format.writeText("into a closed file");
    EXPECT_TRUE(format.hasError());
}

}  // namespace
