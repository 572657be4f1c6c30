// The plane of a mesh, the projection, the view box, and the colours of strokes.
#include <gtest/gtest.h>

#include <vector>

#include "export/ProjectionPlane.h"
#include "export/StyleAttributes.h"
#include "export/ViewBox.h"

namespace tzsvg {
namespace {

PointCache cacheOf(const std::vector<TzPoint>& points) {
    PointCache cache;
    for (uint32_t i = 0; i < points.size(); ++i) cache.add(i, points[i]);
    return cache;
}

TEST(Plane, found) {
    struct Row {
        const char* name;
        std::vector<TzPoint> points;
        PlaneAxis axis;
    };
    const double big = 1e300;
    for (const Row& row : std::vector<Row>{
             {"none", {}, PlaneAxis::kNone},
             {"two points", {{0, 0, 0}, {1, 0, 0}}, PlaneAxis::kNone},
             {"one place", {{1, 1, 0}, {1, 1, 0}, {1, 1, 0}}, PlaneAxis::kNone},
             {"on a line", {{0, 0, 0}, {1, 1, 0}, {2, 2, 0}, {5, 5, 0}}, PlaneAxis::kNone},
             {"x-y", {{0, 0, 5}, {1, 0, 5}, {1, 1, 5}}, PlaneAxis::kZ},
             {"x-y, other side", {{0, 0, 5}, {1, 1, 5}, {1, 0, 5}}, PlaneAxis::kZ},
             {"y-z", {{2, 0, 0}, {2, 1, 0}, {2, 1, 1}}, PlaneAxis::kX},
             {"z-x", {{0, 3, 0}, {1, 3, 0}, {1, 3, 1}}, PlaneAxis::kY},
             {"doubled and collinear first",
              {{0, 0, 0}, {0, 0, 0}, {1, 0, 0}, {1, 0, 0}, {2, 0, 0}, {1, 1, 0}},
              PlaneAxis::kZ},
             {"tilted", {{0, 0, 0}, {1, 0, 1}, {0, 1, 0}}, PlaneAxis::kNone},
             {"tilted a little", {{0, 0, 0}, {1, 0, 1e-4}, {0, 1, 0}}, PlaneAxis::kNone},
             {"as good as flat", {{0, 0, 0}, {1, 0, 1e-6}, {0, 1, 0}}, PlaneAxis::kZ},
             {"small", {{0, 0, 0}, {1e-3, 0, 0}, {0, 1e-3, 0}}, PlaneAxis::kZ},
             {"beyond single precision", {{0, 0, 0}, {big, 0, 0}, {0, big, 0}}, PlaneAxis::kNone},
         }) {
        EXPECT_EQ(findProjectionPlane(cacheOf(row.points)), row.axis) << row.name;
    }
}

TEST(Projection, mapsAndFlips) {
    const QVector3D point(1, 2, 3);
    EXPECT_EQ(Projection(PlaneAxis::kZ, 10.7).map(point), QPointF(1, 8));
    EXPECT_EQ(Projection(PlaneAxis::kX, 10.7).map(point), QPointF(2, 7));
    EXPECT_EQ(Projection(PlaneAxis::kY, 10.7).map(point), QPointF(3, 9));
    EXPECT_EQ(Projection(PlaneAxis::kZ, -10.7).map(point), QPointF(1, -12));
    EXPECT_EQ(Projection(PlaneAxis::kZ, 1e300).map(point), QPointF(1, 2147483645.0));
}

TEST(ViewBox, grows) {
    struct Row {
        const char* name;
        std::vector<const char*> boxes;
        const char* text;
    };
    for (const Row& row : std::vector<Row>{
             {"one", {"1 2 3 4"}, "1 2 3 4"},
             {"two", {"0 0 10 10", "20 5 10 10"}, "0 0 30 15"},
             {"to the left", {"0 0 10 10", "-5 -5 1 1"}, "-5 -5 15 15"},
             {"emptyEdge", {"-10 -20 5 5"}, "-10 -20 9 19"},
             {"six digits", {"0.1234567 0 1234567 1e-5"}, "0.123457 0 1.23457e+06 1e-05"},
         }) {
        ViewBox box;
        for (const char* const text : row.boxes) {
            const auto candidate = readViewBox(text);
            ASSERT_TRUE(candidate) << row.name;
            EXPECT_TRUE(box.add(*candidate)) << row.name;
        }
        EXPECT_EQ(box.text(), row.text) << row.name;
    }
}

TEST(ViewBox, refuses) {
    for (const char* const text :
         {"", "0 0 10", "0,0,10,10", "none", "0 0 inf 10", "0 0 10 nan", "0 0 10 1e39"}) {
        EXPECT_FALSE(readViewBox(text)) << text;
    }
    ViewBox box{-3e38F, 0, 1, 1};
    EXPECT_FALSE(box.add({3e38F, 0, 3e38F, 1}));
    EXPECT_EQ(box.x, -3e38F);
    EXPECT_FALSE(viewBoxOf({{0, 0, 0}, {1e300, 1, 0}, {1e300, 1, 0}}, PlaneAxis::kZ));
}

TEST(ViewBox, margin) {
    const auto box = viewBoxOf({{10, 20, 5}, {110, 220, 5}, {100, 200, 0}}, PlaneAxis::kZ);
    ASSERT_TRUE(box);
    // Not 0 0: the margin's factor is a single-precision 0.1.
    EXPECT_EQ(box->text(), "-1.49012e-07 -2.98023e-07 110 220");
    EXPECT_EQ(viewBoxOf({{1, 2, 3}, {11, 22, 33}, {10, 20, 30}}, PlaneAxis::kX)->text(),
              "-2.98023e-08 -4.47035e-08 22 33");
    EXPECT_EQ(viewBoxOf({{1, 2, 3}, {11, 22, 33}, {10, 20, 30}}, PlaneAxis::kY)->text(),
              "-4.47035e-08 -1.49012e-08 33 11");
    // Nor is the other factor 1.1: that would give a width of 8388616.
    EXPECT_EQ(viewBoxOf({{0, 0, 0}, {7626015, 1, 0}, {7626015, 1, 0}}, PlaneAxis::kZ)->width, 8388617.0F);
}

TEST(StyleAttributes, strokeColour) {
    struct Row {
        const char* text;
        const char* colour;
    };
    for (const Row& row : std::vector<Row>{
             {"rgb: 1 0.5 0", "#ff7f00"},
             {"rgb:1 1 1", "#ffffff"},
             {"rgb: 0.2", "#330000"},
             {"none", "#000000"},
             {"red", "#000000"},
             {"rgb(255,0,0)", "#000000"},
             {"rgb: 2 0 0", "#1fe0000"},        // not clamped
             {"rgb: -1 0 0", "#ffffff010000"},  // nor here
             {"rgb: 1e30 nan 0", "#7fffffff0000"},
         }) {
        EXPECT_EQ(strokeColour(row.text), row.colour) << row.text;
    }
}

TEST(StyleAttributes, defaultStrokeWidth) {
    EXPECT_EQ(defaultStrokeWidth(100), "0.25");
    EXPECT_EQ(defaultStrokeWidth(0), "0");
}

}  // namespace
}  // namespace tzsvg
