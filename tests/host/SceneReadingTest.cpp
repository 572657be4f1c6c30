// Reading a scene file byte by byte: what its numbers mean, and that it is read in chunks shows nowhere.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <optional>

#include "host/Host.h"
#include "host/core/OperationError.h"
#include "host/scenefile/JsonFile.h"
#include "host/scenefile/SceneReader.h"
#include "host/scenefile/SceneWriter.h"
#include "tests/host/SceneText.h"
#include "tests/host/TestFolder.h"

using namespace tzhost;

namespace {

// What a number means depends on where it stands and how it is written: a vertex and the version are
// integers, written as such; an integer has no sign when it is zero; what is too small is zero, what is too
// large refused.
struct NumberText {
    std::string text;
    std::optional<double> coordinate;  // nothing: refused
    bool vertex;                       // an index among the first two points
    bool version;
};

const std::vector<NumberText>& numberTexts() {
    const std::string zeros(400, '0');
    static const std::vector<NumberText> kRows = {
        // Integers
        {"0", 0.0, true, false},
        {"1", 1.0, true, true},
        {"2", 2.0, false, false},
        {"-0", 0.0, false, false},
        {"-1", -1.0, false, false},
        {"4294967295", 4294967295.0, false, false},
        {"4294967296", 4294967296.0, false, false},
        {"4294967297", 4294967297.0, false, false},
        {"9007199254740993", 9007199254740992.0, false, false},
        {"9223372036854775808", 0x1p63, false, false},
        {"18446744073709551615", 0x1p64, false, false},
        {"18446744073709551617", 0x1p64, false, false},
        {"-9223372036854775809", -0x1p63, false, false},
        {"1" + zeros.substr(0, 300), 1e300, false, false},
        {"1" + zeros, {}, false, false},
        // Fractions
        {"0.0", 0.0, false, false},
        {"-0.0", -0.0, false, false},
        {"1.0", 1.0, false, false},
        {"1e0", 1.0, false, false},
        {"0e0", 0.0, false, false},
        {"-0e-5", -0.0, false, false},
        {"1E+2", 100.0, false, false},
        {"1e-2", 0.01, false, false},
        {"0.1", 0.1, false, false},
        {"0.1000000000000000055511151231257827021181583404541015625", 0.1, false, false},
        {"1.00000000000000011102230246251565404236316680908203125", 1.0, false, false},
        {"1.00000000000000011102230246251565404236316680908203126", 0x1.0000000000001p0, false, false},
        {"2.2250738585072011e-308", 0x0.fffffffffffffp-1022, false, false},
        {"8.5", 8.5, false, false},
        // The limits
        {"1.7976931348623157e308", DBL_MAX, false, false},
        {"1.7976931348623158e308", DBL_MAX, false, false},
        {"1.7976931348623159e308", {}, false, false},
        {"-1e309", {}, false, false},
        {"1e999", {}, false, false},
        {"1e99999999999999999999", {}, false, false},
        {"4.9e-324", 5e-324, false, false},
        {"2e-324", 0.0, false, false},
        {"-1e-400", -0.0, false, false},
        {"1e-99999999999999999999", 0.0, false, false},
        {"0." + zeros + "1", 0.0, false, false},
        {"0." + zeros.substr(0, 99) + "1e100", 1.0, false, false},
        // No numbers
        {"+1", {}, false, false},
        {"01", {}, false, false},
        {"-01", {}, false, false},
        {"00", {}, false, false},
        {"-", {}, false, false},
        {"1.", {}, false, false},
        {".5", {}, false, false},
        {"-.5", {}, false, false},
        {"1e", {}, false, false},
        {"1e+", {}, false, false},
        {"1.e1", {}, false, false},
        {"1,5", {}, false, false},
        {"0x1", {}, false, false},
        {"1f", {}, false, false},
        {"--1", {}, false, false},
        {"1 1", {}, false, false},
        {"NaN", {}, false, false},
        {"Infinity", {}, false, false},
        {"-Infinity", {}, false, false},
        {"null", {}, false, false},
        {"true", {}, false, false},
    };
    return kRows;
}

TEST(SceneReading, ReadsNumbers) {
    const TestFolder folder;
    const Host host;
    const auto read = [&](const std::string& text) {
        ScenePtr scene = host.makeScene();
        try {
            readSceneFile(*scene, folder.write("scene.json", text));
        } catch (const OperationError&) {
            scene = {};
        }
        return scene;
    };
    for (const NumberText& row : numberTexts()) {
        SCOPED_TRACE(row.text);
        const ScenePtr scene = read(mesh("\"points\": [[" + row.text + ", 0, 0]]"));
        ASSERT_EQ(row.coordinate.has_value(), bool(scene));
        if (scene) {
            const double coordinate = scene->items().at(0)->data().mesh.point(0).x;
            EXPECT_EQ(*row.coordinate, coordinate);
            EXPECT_EQ(std::signbit(*row.coordinate), std::signbit(coordinate));
        }
        EXPECT_EQ(row.vertex, bool(read(polygons(R"({"type": "LINE", "vertices": [)" + row.text + "]}"))));
        EXPECT_EQ(row.version,
                  bool(read(R"({"format": "tzscene", "items": [], "version": )" + row.text + "}")));
    }
}

// The file is read in chunks: whatever stands across the end of one means what it means elsewhere.
TEST(SceneReading, ReadsAcrossChunks) {
    const std::string text = R"({"format": "tzscene", "version": 1, "items": [{"type": "mesh",
        "name": "\ud83d\ude00\"\u0000)"
                             "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"
                             R"(", "points": [[-12.5e-1, 1234567, 0]],
        "polygons": [{"type": "LINE", "vertices": [0, 0], "tags": {"FILL": "a\\n", "A\"\n ": ""}}]}]})";
    const TestFolder folder;
    const Host host;
    const auto rewritten = [&](size_t spaces, const std::string& after) {
        const ScenePtr scene = host.makeScene();
        readSceneFile(*scene, folder.write("scene.json", std::string(spaces, ' ') + text + after));
        writeSceneFile(*scene, folder / "written.json");
        return folder.read("written.json");
    };
    const std::string expected = rewritten(0, "");
    ASSERT_NE(std::string::npos, expected.find("[-1.25,1234567,0]"));
    for (size_t before = 0; before <= text.size(); ++before) {
        const size_t spaces = JsonFile::kChunkSize - before;
        ASSERT_EQ(expected, rewritten(spaces, "")) << before;
        ASSERT_EQ(expected, rewritten(JsonFile::kChunkSize + spaces, "\n")) << before;
        ASSERT_THROW(rewritten(spaces, "x"), OperationError) << before;
    }
}

// Where an error is, too, is counted over the chunks.
TEST(SceneReading, CountsLinesAcrossChunks) {
    const TestFolder folder;
    const Host host;
    const auto problem = [&](const std::string& text) -> std::string {
        try {
            readSceneFile(*host.makeScene(), folder.write("scene.json", text));
        } catch (const OperationError& error) {
            return error.what();
        }
        return "was read";
    };
    for (size_t before = JsonFile::kChunkSize - 3; before <= JsonFile::kChunkSize + 3; ++before) {
        SCOPED_TRACE(before);
        const std::string spaces(before, ' ');
        const std::string lines(before, '\n');
        const std::string count = std::to_string(before + 1);
        EXPECT_NE(std::string::npos, problem(spaces + "x").find("line 1, column " + count + ":"));
        EXPECT_NE(std::string::npos, problem(lines + "x").find("line " + count + ", column 1:"));
        EXPECT_NE(std::string::npos, problem(spaces + "\n x").find("line 2, column 2:"));
        EXPECT_NE(std::string::npos, problem("{\n\n" + spaces).find("line 3, column " + count + ":"));
        const std::string last = "line " + std::to_string(2 * before + 1) + ", column 2:";
        EXPECT_NE(std::string::npos, problem((lines + spaces).append(lines + " x")).find(last));
    }
}

}  // namespace
