// Pictures of scenes, looked at pixel by pixel where it matters.
#include "host/preview/Preview.h"

#include <gtest/gtest.h>

#include <sstream>

#include "host/Host.h"
#include "host/scene/Tags.h"
#include "hostsdk/CTzError.h"
#include "tests/common/Table.h"
#include "tests/common/TestFolder.h"

using namespace tzhost;

namespace {

constexpr int kSide = 200;

struct Shape {
    std::vector<uint32_t> vertices;
    std::string tags;  // "FILL=red;OPAC=1"
    TzTagId type = kTzPolygonLine;
};

// A scene of polygons over the corners of a 100-square, and of a 40-square in its middle, lower left first,
// ccw.
ScenePtr makeScene(const Host& host, const std::vector<Shape>& shapes, std::vector<Channel> channels,
                   const std::string& viewBox = {}) {
    ScenePtr scene = host.makeScene();
    ItemData item;
    item.type = kTzItemMesh;
    item.channels = std::move(channels);
    if (!viewBox.empty()) item.tags = {{tzTag("VBOX"), viewBox}};
    const TzPoint points[] = {{0, 0, 0},   {100, 0, 0}, {100, 100, 0}, {0, 100, 0},
                              {30, 30, 0}, {70, 30, 0}, {70, 70, 0},   {30, 70, 0}};
    item.mesh.addPoints(points, 8);
    for (const Shape& shape : shapes) {
        const uint32_t polygon = item.mesh.addPolygon(shape.type, shape.vertices.data(),
                                                      static_cast<uint32_t>(shape.vertices.size()));
        std::istringstream tags(shape.tags);
        for (std::string tag; std::getline(tags, tag, ';');)
            item.mesh.setTag(polygon, tagFromName(tag.substr(0, 4)).value(), tag.substr(5));
    }
    scene->addItem(std::move(item));
    return scene;
}

QImage draw(const std::vector<Shape>& shapes, const std::string& definitions = {}) {
    const Host host;
    return drawScene(*makeScene(host, shapes, {{"clipdefs", "<clipPath/>"}, {"svgdefs", definitions}}),
                     kSide);
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

// A place is "x,y".
std::string at(const QImage& image, const std::string& place) {
    return at(image, std::stod(place), std::stod(place.substr(place.find(',') + 1)));
}

TEST(Preview, PaintsByTags) {
    for (const auto& row : readTable("host/preview-paints.txt", 2)) {
        const QImage image = draw({{{0, 1, 1, 2, 2, 3, 3, 0}, row[0]}});
        EXPECT_EQ(QSize(kSide, kSide), image.size());
        EXPECT_EQ(row[1], at(image, 50, 50)) << row[0];
    }
}

// Red up to the middle of a gradient, blue behind it.
TEST(Preview, PaintsGradients) {
    const auto picture = [](const std::string& gradient, const char* stop, const std::string& tags) {
        return draw({{{0, 1, 2, 3, 0}, tags}}, "<stop offset='1'/><" + gradient +
                                                   " id='a'><stop offset='50%' stop-color='#ff0000'" + stop +
                                                   "/><stop offset='.501' style='x:y; stop-color: blue'/></" +
                                                   gradient.substr(0, gradient.find(' ')) + ">");
    };
    for (const auto& row : readTable("host/preview-gradients.txt", 4)) {
        const QImage image = picture(row[0], "", row[1]);
        EXPECT_EQ("#ff0000", at(image, row[2])) << row[0] << row[1];
        EXPECT_EQ("#0000ff", at(image, row[3])) << row[0] << row[1];
    }
    EXPECT_EQ("#ffffff", at(picture("linearGradient", " stop-opacity='0'", "FILL=url(#a)"), 20, 50));
    EXPECT_EQ("#ffcccc", at(picture("linearGradient", "", "FILL=url(#a);FILO=.2"), 20, 50));
}

// A wide stroke from the left to the right, and up: what its start, its corner and its pattern look like.
TEST(Preview, StrokesByTags) {
    for (const auto& row : readTable("host/preview-strokes.txt", 3)) {
        const QImage image =
            draw({{{0, 1, 2, 3, 0}, "FILL=none"}, {{4, 5, 6}, "FILL=none;LCOL=red;LWID=20;" + row[0]}});
        EXPECT_EQ(row[2] == "drawn" ? "#ff0000" : "#ffffff", at(image, row[1])) << row[0] << ' ' << row[1];
    }
}

TEST(Preview, FillsThePolygonsOfAPathTogether) {
    struct Row {
        std::vector<uint32_t> inner;
        const char* rule;
        const char* middle;
    };
    const std::vector<uint32_t> same = {4, 5, 6, 7, 4};
    const std::vector<uint32_t> opposite = {7, 6, 5, 4, 7};
    for (const Row& row : {Row{same, "", "#000000"}, Row{opposite, "", "#ffffff"},
                           Row{same, ";FILR=evenodd", "#ffffff"}, Row{same, ";FILR=nonzero", "#000000"}}) {
        const std::string rule = row.rule;
        const QImage image = draw({{{0, 1, 2, 3, 0}, "SPAT=start{1}" + rule},
                                   {{0, 0}, "SPAT={1}" + rule},
                                   {row.inner, "SPAT=end{1}" + rule}});
        EXPECT_EQ(row.middle, at(image, 50, 50)) << rule;
        EXPECT_EQ("#000000", at(image, 10, 50));
    }
}

// Each dash takes memory: where there are too many, a whole line is drawn.
TEST(Preview, BoundsDashes) {
    std::vector<uint32_t> vertices = {0, 1};
    const std::string tags = "FILL=none;LCOL=red;LWID=6;DARR=0.1, 9.9";
    EXPECT_EQ(at(draw({{vertices, tags}}), 55, 0), "#ffffff");
    for (int i = 0; i < 10000; ++i) vertices.insert(vertices.end(), {0, 1});
    EXPECT_EQ(at(draw({{vertices, tags}}), 55, 0), "#ff0000");
}

TEST(Preview, DrawsAsTheDrawingSays) {
    for (const auto& row : readTable("host/preview-drawings.txt", 5)) {
        const Host host;
        const auto slash = row[2].find('/');
        const ScenePtr scene = makeScene(
            host, {{{0, 1, 2, 3, 0}, row[2].substr(0, slash)}, {{4, 5, 6, 7, 4}, row[2].substr(slash + 1)}},
            {{"groupdefs", row[0]}, {"svgdefs", row[1]}}, "0 0 100 100");
        EXPECT_EQ(row[4], at(drawScene(*scene, kSide), row[3])) << row[0] << row[1] << row[2] << row[3];
    }
}

// A path that repeats itself: not every copy is drawn, but what is seen is the same.
TEST(Preview, DrawsRepeatedSubPaths) {
    for (const int copies : {3000, 3001}) {
        for (const char* const rule : {"nonzero", "evenodd"}) {
            std::vector<Shape> shapes;
            for (int i = 0; i < copies; ++i) {
                const std::string place = i == 0 ? "start{1}" : i + 1 == copies ? "end{1}" : "{1}";
                shapes.push_back({{0, 1, 2, 3, 0}, "SPAT=" + place + ";FILR=" + rule});
            }
            const bool isEmpty = copies % 2 == 0 && rule == std::string("evenodd");
            EXPECT_EQ(isEmpty ? "#ffffff" : "#000000", at(draw(shapes), 50, 50)) << copies << rule;
        }
    }
}

TEST(Preview, ShowsThePage) {
    const Host host;
    const ScenePtr scene = makeScene(host, {{{4, 5, 6, 7, 4}, "FILL=red"}}, {}, "-100, 10 200 50");
    // The scene's top, 100, is where the drawing has y = 0.
    const QImage picture = drawScene(*scene, kSide, {true});
    EXPECT_EQ(picture.size(), QSize(200, 50));
    EXPECT_EQ(picture.pixelColor(150, 25), QColor(Qt::red));
    EXPECT_EQ(picture.pixelColor(150, 15), QColor(Qt::white));
    EXPECT_EQ(picture.pixelColor(50, 25), QColor(Qt::white));
    // Where it is said to be elsewhere.
    EXPECT_EQ(drawScene(*scene, kSide, {true, DrawingPlace{110}}).pixelColor(150, 25), QColor(Qt::white));
    EXPECT_FALSE(hasPage(*host.makeScene(), {true}));
    EXPECT_THROW(drawScene(*host.makeScene(), kSide, {true}), CTzError);
}

TEST(Preview, TurnsYDownwards) {
    const QImage image = draw({{{0, 0, 1, 1, 1, 2, 2}, "", kTzPolygonBezier}});
    EXPECT_EQ("#000000", at(image, 80, 20));
    EXPECT_EQ("#ffffff", at(image, 20, 80));
}

TEST(Preview, DrawsCurves) {
    const QImage image = draw({{{0, 3, 2, 1}, "", kTzPolygonBezier}});
    EXPECT_EQ("#000000", at(image, 50, 70));
    EXPECT_EQ("#ffffff", at(image, 50, 80)) << "the line between the control points";
}

TEST(Preview, DrawsScenesOfAnyExtent) {
    struct Row {
        const char* what;
        std::vector<TzPoint> points;
        QSize size;  // empty: refused
    };
    const Row rows[] = {
        {"nothing", {}, {16, 16}},
        {"one point", {{5, 5, 0}}, {16, 16}},
        {"a line", {{0, 0, 0}, {1e-300, 0, 0}}, {200, 16}},
        {"far away", {{1e300, 1e300, 0}, {1.5e300, 1.25e300, 0}}, {200, 108}},
        {"beyond all numbers", {{-1.7e308, 0, 0}, {1.7e308, 0, 0}}, {}},
    };
    const Host host;
    for (const Row& row : rows) {
        const ScenePtr scene = host.makeScene();
        ItemData item;
        item.type = kTzItemMesh;
        item.mesh.addPoints(row.points.data(), static_cast<uint32_t>(row.points.size()));
        scene->addItem(std::move(item));
        if (row.size.isEmpty()) {
            EXPECT_THROW(drawScene(*scene, kSide), CTzError);
        } else {
            EXPECT_EQ(row.size, drawScene(*scene, kSide).size()) << row.what;
        }
    }
}

}  // namespace
