// Reading a scene file byte by byte: what its numbers mean, and that it is read in chunks shows nowhere.
#include <gtest/gtest.h>

#include <cmath>

#include "host/Host.h"
#include "host/core/OperationError.h"
#include "host/io/Json.h"
#include "host/scenefile/SceneReader.h"
#include "host/scenefile/SceneWriter.h"
#include "tests/common/SceneText.h"
#include "tests/common/Table.h"
#include "tests/common/TestFolder.h"

using namespace tzhost;

namespace {

// What a number means depends on where it stands and how it is written: a vertex and the version are
// integers, written as such; an integer has no sign when it is zero; what is too small is zero, what is too
// large refused.
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
    auto rows = readTable("host/scene-numbers.txt", 4);
    const std::string zeros(400, '0');
    rows.push_back({"1" + zeros, "refused", "no", "no"});
    rows.push_back({"0." + zeros.substr(0, 99) + "1e100", "1", "no", "no"});
    for (const auto& row : rows) {
        SCOPED_TRACE(row[0]);
        const ScenePtr scene = read(mesh("\"points\": [[" + row[0] + ", 0, 0]]"));
        ASSERT_EQ(row[1] != "refused", bool(scene));
        if (scene) {
            const double expected = std::strtod(row[1].c_str(), nullptr);
            const double coordinate = scene->items().at(0)->data().mesh.point(0).x;
            EXPECT_EQ(expected, coordinate);
            EXPECT_EQ(std::signbit(expected), std::signbit(coordinate));
        }
        EXPECT_EQ(row[2] == "yes", bool(read(polygons(R"({"type": "LINE", "vertices": [)" + row[0] + "]}"))));
        EXPECT_EQ(row[3] == "yes",
                  bool(read(R"({"format": "tzscene", "items": [], "version": )" + row[0] + "}")));
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
