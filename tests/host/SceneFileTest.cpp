// The scene file: what it keeps, and what it refuses with which words.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <random>

#include "host/Host.h"
#include "host/ModuleLibrary.h"
#include "host/core/OperationError.h"
#include "host/scenefile/SceneReader.h"
#include "host/scenefile/SceneWriter.h"
#include "hostsdk/CTzText.h"
#include "tests/host/SceneText.h"
#include "tests/host/TestFolder.h"

using namespace tzhost;

namespace {

struct Refused {
    const char* what;
    std::string text;
    const char* reason;  // must be part of the message
};

const std::vector<Refused>& refusals() {
    static const std::vector<Refused> kRows = {
        // The document
        {"empty file", "", "line 1, column 1"},
        {"no JSON", "<svg/>", "line 1, column 1"},
        {"cut short", document("").substr(0, 40), "parse error"},
        {"something after the end", document("") + "x", "parse error"},
        {"NUL after the end", document("") + std::string("\0x", 2), "parse error at line 1, column 49"},
        {"something after a byte order mark's end", "\xEF\xBB\xBF\xEF\xBB\xBF" + document(""),
         "line 1, column 4"},
        {"half a byte order mark", "\xEF\xBB" + document(""), "line 1, column 3"},
        {"an array", "[]", "expected an object"},
        {"other format", R"({"format": "scene", "version": 1, "items": []})",
         "format: expected the text \"tzscene\""},
        {"other version", R"({"format": "tzscene", "version": 2, "items": []})",
         "version: expected the number 1"},
        {"no version", R"({"format": "tzscene", "items": []})", "key \"version\" is missing"},
        {"no items", R"({"format": "tzscene", "version": 1})", "key \"items\" is missing"},
        {"unknown key", R"({"format": "tzscene", "colour": 1})", "unknown key \"colour\""},
        {"key twice", R"({"format": "tzscene", "format": "tzscene"})", "key \"format\" appears twice"},
        {"not UTF-8", document("{\"name\": \"a\xFF\"}"), "ill-formed UTF-8"},
        {"lone surrogate", document(R"({"name": "\ud800"})"), "surrogate"},
        {"lone low surrogate", document(R"({"name": "\udc00"})"), "items[0].name: ill-formed UTF-8"},
        {"lone low surrogate in a key", document(R"({"\udfff": ""})"), "items[0]: ill-formed UTF-8"},
        {"surrogates the wrong way round", document(R"({"name": "\ude00\ud83d"})"), "surrogate"},
        {"overlong", document("{\"name\": \"\xC0\x80\"}"), "ill-formed UTF-8"},
        {"control character", document("{\"name\": \"a\n\"}"), "line 1, column 58"},
        {"NUL", document(std::string("{\"name\": \"a\0\"}", 14)), "line 1, column 58"},
        {"comment", "/**/" + document(""), "line 1, column 1"},
        {"comma after the last", document(R"({"type": "a", "name": "b"},)"), "parse error"},
        {"objects forever", mesh("\"tags\": {\"A   \": " + std::string(1'000'000, '{')), "expected a text"},
        {"deep nesting", document(std::string(1'000'000, '[')), "items[0]: expected an object"},
        {"deep objects in an unknown key", document(R"({"a": {"a": {"a": 1}}})"), "unknown key \"a\""},
        // Items
        {"item is a number", document("1"), "items[0]: expected an object"},
        {"no type", document(R"({"name": "m"})"), "items[0]: key \"type\" is missing"},
        {"no name", document(R"({"type": "mesh"})"), "items[0]: key \"name\" is missing"},
        {"empty type", document(R"({"type": "", "name": ""})"), "items[0].type: is empty"},
        {"type is null", document(R"({"type": null})"), "items[0].type: expected a text"},
        {"unknown key in an item", mesh(R"("colour\n": 1)"), "items[0]: unknown key \"colour\\x0A\""},
        {"key twice in an item", mesh(R"("name": "n")"), "items[0]: key \"name\" appears twice"},
        {"points on a camera", document(R"({"type": "camera", "name": "c", "points": [[0, 0, 0]]})"),
         "only an item"},
        {"tags is an array", mesh(R"("tags": [])"), "items[0].tags: expected an object"},
        {"tag name too short", mesh(R"("tags": {"VBO": ""})"), "tag name \"VBO\" is not four ASCII"},
        {"tag name not ASCII", mesh(R"("tags": {"VBä": ""})"), "is not four ASCII"},
        {"tag twice", mesh(R"("tags": {"VBOX": "", "A   ": "", "VBOX": ""})"), "key \"VBOX\" appears twice"},
        {"tag is a number", mesh(R"("tags": {"VBOX": 1})"), "expected a text at key \"VBOX\""},
        {"package is an object", mesh(R"("packages": [{}])"), "items[0].packages[0]: expected a text"},
        {"package that nobody serves", mesh(R"("packages": ["x.package"])"),
         "items[0]: package \"x.package\": not found"},
        {"channel without package", mesh(R"("channels": {"text": ""})"),
         "items[0]: channel \"text\": not found"},
        {"channel twice", mesh(R"("channels": {"a": "", "a": ""})"), "key \"a\" appears twice"},
        {"channel is a list", mesh(R"("channels": {"a": []})"), "expected a text at key \"a\""},
        // Points
        {"two coordinates", mesh(R"("points": [[1, 2]])"), "points[0]: expected three numbers"},
        {"four coordinates", mesh(R"("points": [[0, 0, 0], [1, 2, 3, 4]])"),
         "points[1]: expected three numbers"},
        {"coordinate far too large", mesh(R"("points": [[1e999, 0, 0]])"),
         "line 1, column 89: Number too big"},
        {"coordinate too large", mesh(R"("points": [[0, 1.8e308, 0]])"), "points[0]: \"1.8e308\" is too big"},
        {"coordinate is NaN", mesh(R"("points": [[NaN, 0, 0]])"), "parse error"},
        {"coordinate is a text", mesh(R"("points": [["1", 0, 0]])"), "points[0]: expected three numbers"},
        {"point is a number", mesh(R"("points": [1])"), "points[0]: expected an array of three numbers"},
        // Polygons
        {"polygon without type", polygons(R"({"vertices": []})"), "polygons[0]: key \"type\" is missing"},
        {"polygon without vertices", polygons(R"({"type": "LINE"})"),
         "polygons[0]: key \"vertices\" is missing"},
        {"polygon type too long", polygons(R"({"type": "LINES"})"), "\"LINES\" is not four ASCII"},
        {"unknown key in a polygon", polygons(R"({"typ": "LINE"})"), "polygons[0]: unknown key \"typ\""},
        {"vertex beyond the points", polygons(R"({"type": "LINE", "vertices": [0, 1, 2]})"),
         "polygons[0].vertices[2]: there is no point 2"},
        {"negative vertex", polygons(R"({"type": "LINE", "vertices": [-1]})"),
         "vertices[0]: there is no point -1"},
        {"vertex beyond 32 bits", polygons(R"({"type": "LINE", "vertices": [4294967296]})"),
         "no point 4294967296"},
        {"vertex with a fraction", polygons(R"({"type": "LINE", "vertices": [1.0]})"),
         "expected the index of a point"},
        {"polygon tag twice", polygons(R"({"type": "LINE", "tags": {"FILL": "", "FILL": ""}})"),
         "polygons[0].tags: key \"FILL\" appears twice"},
        {"error in the second item", document(R"({"type": "mesh", "name": "a"}, {"type": "mesh"})"),
         "items[1]: key"},
    };
    return kRows;
}

TEST(SceneFile, RefusesWithPlaceAndReason) {
    const TestFolder folder;
    const Host host;
    for (const Refused& row : refusals()) {
        const ScenePtr scene = host.makeScene();
        const auto file = folder.write("scene.json", row.text);
        try {
            readSceneFile(*scene, file);
            ADD_FAILURE() << row.what << ": was read";
        } catch (const OperationError& error) {
            const std::string message = error.what();
            EXPECT_NE(std::string::npos, message.find(row.reason)) << row.what << ": " << message;
            EXPECT_EQ(0U, message.find(file.native() + ": read: 0x8000000")) << row.what << ": " << message;
            EXPECT_EQ(std::string::npos, message.find('\n')) << row.what;
        }
        EXPECT_TRUE(scene->items().empty()) << row.what << ": left items";
    }
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
