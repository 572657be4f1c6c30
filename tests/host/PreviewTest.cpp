// Pictures of scenes, looked at pixel by pixel where it matters.
#include "host/preview/Preview.h"

#include <gtest/gtest.h>

#include "host/Host.h"
#include "host/scenefile/SceneReader.h"
#include "hostsdk/CTzError.h"
#include "tests/host/TestFolder.h"

using namespace tzhost;

namespace {

constexpr int kSide = 200;

// Draws polygons over the corners of a 100-square, and of a 40-square in its middle, lower left first, ccw.
QImage draw(const std::string& polygons) {
    const TestFolder folder;
    const Host host;
    const ScenePtr scene = host.makeScene();
    readSceneFile(*scene, folder.write("scene.json", R"({"format": "tzscene", "version": 1, "items": [
        {"type": "mesh", "name": "m", "points": [[0, 0, 0], [100, 0, 0], [100, 100, 0], [0, 100, 0],
         [30, 30, 0], [70, 30, 0], [70, 70, 0], [30, 70, 0]], "polygons": [)" +
                                                         polygons + "]}]}"));
    return drawScene(*scene, kSide);
}

// The colour at a place in scene units, as "#rrggbb".
std::string at(const QImage& image, double x, double y) {
    const double margin = kSide * 0.04;
    const double scale = (kSide - 2 * margin) / 100.0;
    return image
        .pixelColor(static_cast<int>(margin + x * scale), static_cast<int>(kSide - margin - y * scale))
        .name()
        .toStdString();
}

TEST(Preview, PaintsByTags) {
    struct Row {
        const char* tags;
        const char* middle;
    };
    const Row rows[] = {
        {R"("X   ": "")", "#000000"},
        {R"("FILL": "#f00")", "#ff0000"},
        {R"("FILL": " teal ")", "#008080"},
        {R"_("FILL": "rgb(0, 100%, 255)")_", "#00ffff"},
        {R"("FILL": "rgb: 1 0 0")", "#ff0000"},
        {R"("FILL": "none")", "#ffffff"},
        {R"("FILL": "no colour")", "#000000"},
        {R"("FILL": "#0000ff", "FILO": "0")", "#ffffff"},
        {R"("FILL": "#0000ff", "OPAC": "0%")", "#ffffff"},
        {R"("FILL": "none", "LCOL": "lime", "LWID": "80px")", "#ffffff"},
        {R"("FILL": "none", "LCOL": "lime", "LWID": "120px")", "#00ff00"},
        {R"("FILL": "none", "LCOL": "lime", "LWID": "1e999")", "#00ff00"},
    };
    for (const Row& row : rows) {
        const QImage image = draw(R"({"type": "LINE", "vertices": [0, 1, 1, 2, 2, 3, 3, 0], "tags": {)" +
                                  std::string(row.tags) + "}}");
        EXPECT_EQ(QSize(kSide, kSide), image.size());
        EXPECT_EQ(row.middle, at(image, 50, 50)) << row.tags;
    }
}

TEST(Preview, FillsThePolygonsOfAPathTogether) {
    const std::string outer =
        R"({"type": "LINE", "vertices": [0, 1, 2, 3, 0], "tags": {"SPAT": "start{1}"}},)";
    const std::string hole = R"({"type": "LINE", "vertices": [7, 6, 5, 4, 7], "tags": {"SPAT": "end{1}"}})";
    const QImage image = draw(outer + hole);
    EXPECT_EQ("#ffffff", at(image, 50, 50));
    EXPECT_EQ("#000000", at(image, 10, 50));
}

// Each dash takes memory: where there are too many, a whole line is drawn.
TEST(Preview, BoundsDashes) {
    std::string vertices = "0, 1";
    for (int i = 0; i < 10000; ++i) vertices += ", 0, 1";
    const std::string tags = R"("FILL": "none", "LCOL": "red", "LWID": "6", "DARR": ")";
    const auto line = [&](const std::string& along, const std::string& dashes) {
        return draw(R"({"type": "LINE", "vertices": [)" + along + "], \"tags\": {" + tags + dashes +
                    R"("}})");
    };
    EXPECT_EQ(at(line("0, 1", "0.1, 9.9"), 55, 0), "#ffffff");
    EXPECT_EQ(at(line(vertices, "0.1, 9.9"), 55, 0), "#ff0000");
}

TEST(Preview, TurnsYDownwards) {
    const QImage image = draw(R"({"type": "BEZR", "vertices": [0, 0, 1, 1, 1, 2, 2]})");
    EXPECT_EQ("#000000", at(image, 80, 20));
    EXPECT_EQ("#ffffff", at(image, 20, 80));
}

TEST(Preview, DrawsScenesOfAnyExtent) {
    struct Row {
        const char* what;
        std::vector<TzPoint> points;
        QSize size;
    };
    const Row rows[] = {
        {"nothing", {}, {16, 16}},
        {"one point", {{5, 5, 0}}, {16, 16}},
        {"a line", {{0, 0, 0}, {1e-300, 0, 0}}, {200, 16}},
        {"far away", {{1e300, 1e300, 0}, {1.5e300, 1.25e300, 0}}, {200, 108}},
    };
    const Host host;
    for (const Row& row : rows) {
        const ScenePtr scene = host.makeScene();
        ItemData item;
        item.type = kTzItemMesh;
        item.mesh.addPoints(row.points.data(), static_cast<uint32_t>(row.points.size()));
        scene->addItem(std::move(item));
        EXPECT_EQ(row.size, drawScene(*scene, kSide).size()) << row.what;
    }
    const ScenePtr scene = host.makeScene();
    ItemData item;
    item.type = kTzItemMesh;
    const TzPoint points[] = {{-1.7e308, 0, 0}, {1.7e308, 0, 0}};
    item.mesh.addPoints(points, 2);
    scene->addItem(std::move(item));
    EXPECT_THROW(drawScene(*scene, kSide), CTzError);
}

}  // namespace
