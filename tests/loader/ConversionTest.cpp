// Shapes to polygons, through the loaded module: points, vertices, sub-paths, the y flip.
#include "tests/common/Table.h"
#include "tests/loader/LoaderFixture.h"

namespace tzhost {
namespace {

class ShapeConversion : public LoaderTest {
  protected:
    // The vertices of one shape in a document whose flip height is 100.
    std::string verticesOf(const std::string& shape) {
        if (!imports("<svg><rect height='100'/>" + shape + "</svg>")) return "refused";
        return mesh().polygonCount() > 1 ? vertices(1) : "none";
    }
};

TEST_F(ShapeConversion, lines) {
    for (const auto& row : readTable("loader/conversions.txt", 2))
        EXPECT_EQ(verticesOf(row[0]), row[1]) << row[0];
}

TEST_F(ShapeConversion, rectangle) {
    EXPECT_EQ(verticesOf("<rect width='10' height='5'/>"), "0,100 10,100 10,100 10,95 10,95 0,95 0,95 0,100");
    EXPECT_EQ(mesh().pointCount(), 16U) << "every corner is added twice, points are not merged";
    EXPECT_EQ(mesh().polygon(1).type, kTzPolygonLine);
}

TEST_F(ShapeConversion, circle) {
    verticesOf("<circle r='10'/>");
    EXPECT_EQ(mesh().polygon(1).type, kTzPolygonBezier);
    const Polygon& circle = mesh().polygon(1);
    ASSERT_EQ(circle.vertexCount, 13U);
    EXPECT_EQ(mesh().vertex(circle, 12), mesh().vertex(circle, 0)) << "closes on the same point";
    const TzPoint anchors[] = {{0, 90, 0}, {10, 100, 0}, {0, 110, 0}, {-10, 100, 0}};
    for (uint32_t i = 0; i < 4; ++i) {
        const TzPoint& point = mesh().point(mesh().vertex(circle, 3 * i));
        EXPECT_EQ(point.x, anchors[i].x) << i;
        EXPECT_EQ(point.y, anchors[i].y) << i;
    }
    EXPECT_EQ(mesh().point(mesh().vertex(circle, 1)).x, 5.522847498307932);
    EXPECT_EQ(mesh().point(mesh().vertex(circle, 2)).y, 100 - 5.522847498307932);
}

TEST_F(ShapeConversion, roundedRectangle) {
    EXPECT_EQ(verticesOf("<rect width='100' height='50' rx='10' ry='20'/>"),
              "10,100 15.5228,100 84.4772,100 90,100 95.5228,100 100,91.0457 100,80 100,68.9543 100,81.0457 "
              "100,70 100,58.9543 95.5228,50 90,50 84.4772,50 15.5228,50 10,50 4.47715,50 0,58.9543 0,70 "
              "0,81.0457 0,68.9543 0,80 0,91.0457 4.47715,100 10,100");
    // Radii are not clamped, and one that is absent is 0.
    EXPECT_EQ(verticesOf("<rect width='2' height='2' rx='4'/>").substr(0, 14), "4,100 6.20914,");
}

TEST_F(ShapeConversion, flip) {
    ASSERT_TRUE(imports("<svg><rect height='99.9'/><line y1='1'/></svg>"));
    EXPECT_EQ(vertices(1), "0,98 0,99") << "about 99, not 99.9";
    ASSERT_TRUE(imports("<svg><g transform='translate(0 50)'><rect height='10'/></g></svg>"));
    EXPECT_EQ(vertices(0).substr(0, 6), "0,-40 ") << "groups' transforms do not count for the height";
    ASSERT_TRUE(imports("<svg><defs><rect height='70'/></defs><line/></svg>"));
    EXPECT_EQ(vertices(0), "0,70 0,70") << "but definitions do";
}

TEST_F(ShapeConversion, percentReferences) {
    ASSERT_TRUE(imports("<svg width='200' height='400' viewBox='0 0 1 1'><line x2='50%' y2='25%'/></svg>"));
    EXPECT_EQ(vertices(0), "0,0 100,-100");
    ASSERT_TRUE(imports("<svg viewBox='0 0 10 20'><line x2='50%' y2='25%'/></svg>"));
    EXPECT_EQ(vertices(0), "0,0 5,-5");
    ASSERT_TRUE(imports("<svg><line x2='50%'/></svg>"));
    EXPECT_EQ(vertices(0), "0,0 0.5,0") << "every load starts afresh";
}

using PathConversion = ShapeConversion;

TEST_F(PathConversion, straightThirds) {
    ASSERT_EQ(verticesOf("<path d='M0 0 L10 5'/>"), "0,100 3.33333,98.3333 6.66667,96.6667 10,95");
    const Polygon& path = mesh().polygon(1);
    EXPECT_EQ(mesh().point(mesh().vertex(path, 1)).x, static_cast<double>(10.0F / 3.0F))
        << "single precision";
    EXPECT_EQ(mesh().point(mesh().vertex(path, 2)).y, 100 - 3.3333332538604736);
}

TEST_F(PathConversion, onlyTheLastCloses) {
    ASSERT_TRUE(imports("<svg><path d='M0 0 H3 V3 z M9 9 H12 z M5 5 C6 5 6 6 5 5'/></svg>"));
    ASSERT_EQ(mesh().polygonCount(), 3U);
    const auto closesOnItsFirst = [&](uint32_t i) {
        const Polygon& polygon = mesh().polygon(i);
        return mesh().vertex(polygon, 0) == mesh().vertex(polygon, polygon.vertexCount - 1);
    };
    EXPECT_EQ(mesh().polygon(0).vertexCount, 10U);
    EXPECT_FALSE(closesOnItsFirst(0)) << "open, though it returns to its start";
    EXPECT_FALSE(closesOnItsFirst(1));
    EXPECT_EQ(mesh().polygon(2).vertexCount, 4U);
    EXPECT_TRUE(closesOnItsFirst(2));
}

TEST_F(PathConversion, subPathTags) {
    ASSERT_TRUE(
        imports("<svg><path d='M0 0 L1 1'/><path d='M0 0 L1 1 M2 2 L3 3 M4 4 L5 5'/>"
                "<path d='M0 0 M1 1 L2 2 M3 3'/></svg>"));
    EXPECT_EQ(tags("SPAT"), "- start{1} {1} end{1} start{2} end{2}");
    EXPECT_EQ(tags("ZORD"), "0 1 1 1 2 2");
    EXPECT_EQ(vertices(5), "3,2") << "a trailing move is a polygon of one vertex";
}

}  // namespace
}  // namespace tzhost
