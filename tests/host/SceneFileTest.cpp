// The scene file: what it keeps, and what it refuses with which words.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <map>
#include <random>

#include "host/Host.h"
#include "host/ModuleLibrary.h"
#include "host/core/OperationError.h"
#include "host/scenefile/SceneReader.h"
#include "host/scenefile/SceneWriter.h"
#include "hostsdk/CTzText.h"
#include "tests/common/SceneText.h"
#include "tests/common/Table.h"
#include "tests/common/TestFolder.h"

using namespace tzhost;

namespace {

void expectRefused(const std::string& text, const std::string& reason) {
    const TestFolder folder;
    const Host host;
    const ScenePtr scene = host.makeScene();
    const auto file = folder.write("scene.json", text);
    try {
        readSceneFile(*scene, file);
        ADD_FAILURE() << text << ": was read";
    } catch (const OperationError& error) {
        const std::string message = error.what();
        EXPECT_NE(std::string::npos, message.find(reason)) << message;
        EXPECT_EQ(0U, message.find(file.native() + ": read: 0x8000000")) << message;
        EXPECT_EQ(std::string::npos, message.find('\n')) << message;
    }
    EXPECT_TRUE(scene->items().empty()) << reason;
}

TEST(SceneFile, RefusesWithPlaceAndReason) {
    const std::map<std::string, std::string (*)(const std::string&)> kinds = {
        {"document", document}, {"mesh", mesh}, {"polygons", polygons}, {"text", [](const std::string& text) {
                                                                             return text;
                                                                         }}};
    for (const auto& row : readTable("host/refused-scene-files.txt", 3))
        expectRefused(kinds.at(row[0])(row[1]), row[2]);
    expectRefused(document("") + std::string("\0x", 2), "parse error at line 1, column 49");
    expectRefused(mesh("\"tags\": {\"A   \": " + std::string(1'000'000, '{')), "expected a text");
    expectRefused(document(std::string(1'000'000, '[')), "items[0]: expected an object");
}

TEST(SceneFile, TakesKeysInAnyOrderAndLeavesOutWhatIsEmpty) {
    const TestFolder folder;
    const Host host;
    const ScenePtr scene = host.makeScene();
    readSceneFile(*scene, folder.write("scene.json", R"({"items": [
        {"polygons": [{"tags": {"FILL": "red"}, "vertices": [1, 0], "type": "LINE"}, {"type": "ABCD", "vertices": []}],
         "points": [[0, 0, 0], [1e2, -2, 0.5]], "name": "", "type": "mesh"},
        {"type": "camera", "name": "c", "tags": {}, "points": []}], "version": 1, "format": "tzscene"})"));
    ASSERT_EQ(2U, scene->items().size());
    const MeshData& read = scene->items()[0]->data().mesh;
    EXPECT_EQ("red", findTag(read.polygon(0).tags, tzTag("FILL")));
    EXPECT_EQ(1U, read.vertex(read.polygon(0), 0));
    EXPECT_EQ(0U, read.polygon(1).vertexCount);
    EXPECT_EQ(100.0, read.bounds().upper.x);

    writeSceneFile(*scene, folder / "written.json");
    EXPECT_EQ(R"({
  "format": "tzscene", "version": 1,
  "items": [
    {
      "type": "mesh",
      "name": "",
      "points": [
[0,0,0],
[100,-2,0.5]
      ],
      "polygons": [
{"type":"LINE","vertices":[1,0],"tags":{"FILL":"red"}},
{"type":"ABCD","vertices":[]}
      ]
    },
    {
      "type": "camera",
      "name": "c"
    }
  ]
}
)",
              folder.read("written.json"));
}

// Every double comes back as the same bits: special ones, and any.
TEST(SceneFile, KeepsEveryCoordinate) {
    std::vector<double> numbers = {
        0.0,  -0.0, 0.1,     1.0 / 3.0,    5e-324, -DBL_MIN, DBL_MAX, 1e21,
        1e22, 1e-7, 1 << 20, 0x1.8p53 + 2, 0x1p63, 0x1p64,   -0x1p63, 123456789012345678.0};
    std::mt19937_64 random(11);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same sequence every time
    while (numbers.size() < 20'000) {
        const uint64_t bits = random();
        double number = 0.0;
        std::memcpy(&number, &bits, sizeof number);
        if (std::isfinite(number)) numbers.push_back(number);
    }
    const TestFolder folder;
    const Host host;
    ItemData item;
    item.type = kTzItemMesh;
    for (const double number : numbers) {
        const TzPoint point{number, 0, -number};
        item.mesh.addPoints(&point, 1);
    }
    const ScenePtr written = host.makeScene();
    written->addItem(std::move(item));
    writeSceneFile(*written, folder / "scene.json");
    const ScenePtr read = host.makeScene();
    readSceneFile(*read, folder / "scene.json");
    const MeshData& back = read->items().at(0)->data().mesh;
    ASSERT_EQ(numbers.size(), back.pointCount());
    for (uint32_t i = 0; i < numbers.size(); ++i) {
        ASSERT_EQ(numbers[i], back.point(i).x);
        ASSERT_EQ(std::signbit(numbers[i]), std::signbit(back.point(i).x)) << numbers[i];
    }
}

TEST(SceneFile, KeepsEveryTextWithPackagesAndChannels) {
    const std::string texts[] = {"",
                                 "plain",
                                 "\"quoted\\\" / {}",
                                 std::string("\0\x01\x1F\x7F\n\t\r", 7),
                                 "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xE2\x80\xA8",
                                 std::string(100'000, '"')};
    const TestFolder folder;
    Host host;
    ModuleLibrary module(host, std::filesystem::path(PROBE_FOLDER) / "probe.so");
    for (const std::string& text : texts) {
        const ScenePtr written = host.makeScene();
        ItemData data;
        data.type = kTzItemMesh;
        data.name = text;
        data.mesh.addPolygon(kTzPolygonLine, nullptr, 0);
        data.mesh.setTag(0, tzTag("A\"\\ "), text);
        Item& item = written->addItem(std::move(data));
        item.setTag(tzTag("\1ABC"), tzText(text));
        item.attachPackage("probe.package");
        item.putChannel("probetext", text);
        writeSceneFile(*written, folder / "scene.json");
        const ScenePtr read = host.makeScene();
        readSceneFile(*read, folder / "scene.json");
        const ItemData& back = read->items().at(0)->data();
        EXPECT_EQ(text, back.name);
        EXPECT_EQ(text, back.tags.at(0).text);
        EXPECT_EQ(text, back.channels.at(0).text);
        EXPECT_EQ(text, findTag(back.mesh.polygon(0).tags, tzTag("A\"\\ ")));
        EXPECT_TRUE(back.packages.at(0).instance);
    }
}

}  // namespace
