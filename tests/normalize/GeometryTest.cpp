// Boxes, outlines, sub-paths and path text. What the walk makes of them is seen by pixels elsewhere.
#include <gtest/gtest.h>

#include <QPainterPath>
#include <cmath>

#include "normalize/document/SourceDocument.h"
#include "normalize/geometry/PathText.h"
#include "normalize/geometry/ShapeOutline.h"
#include "normalize/geometry/StrokeOutline.h"
#include "normalize/geometry/SubPaths.h"
#include "normalize/style/Cascade.h"
#include "normalize/text/PathData.h"
#include "normalize/write/Grid.h"
#include "tests/normalize/PathWords.h"

namespace tznormalize {
namespace {

Path path(const char* data) {
    return readPathData(QString::fromUtf8(data));
}

TEST(Matrix, stretches) {
    const Matrix turned = Matrix::rotation(30) * Matrix::scaling(4, 3);
    EXPECT_NEAR(turned.stretches().most, 4, 1e-12);
    EXPECT_NEAR(turned.stretches().least, 3, 1e-12);
    EXPECT_FALSE(turned.isEven());
    EXPECT_TRUE((Matrix::rotation(30) * Matrix::scaling(-2, 2)).isEven());
    const Matrix m{1, 2, 3, 4, 5, 6};
    EXPECT_LT(distance((m * *m.inverse()).map({7, 8}), {7, 8}), 1e-12);
    EXPECT_FALSE(Matrix::scaling(1, 0).inverse());
    EXPECT_TRUE(Matrix::scaling(NAN, 1).isFlat());
    EXPECT_EQ(Matrix::rotation(90), (Matrix{0, 1, -1, 0, 0, 0}));
}

TEST(Path, boxes) {
    const Path curve = path("M0 0C0 10 10 10 10 0");
    EXPECT_EQ(curve.controlsBox()->bottom, 10);
    EXPECT_EQ(curve.tightBox()->bottom, 7.5);
    EXPECT_EQ(path("M5 5L6 6Z").tightBox()->left, 5);
    EXPECT_FALSE(Path().tightBox());
    EXPECT_TRUE(path("M0 0H1V1Z").isClosedPolygon());
    EXPECT_FALSE(path("M0 0H1V1ZM2 2H3V4Z").isClosedPolygon());
    EXPECT_FALSE(path("M0 0H1V1").isClosedPolygon());
}

TEST(SubPaths, loneMovesAndDots) {
    EXPECT_EQ(words(withoutLoneMoves(path("M1 1zM2 2L3 3z"))), "M 2 2 L 3 3 Z");
    EXPECT_EQ(words(withDots(path("M1 1z M2 2L2.01 2 M3 3H4"), 0.1, 0.1)),
              "M 1 1 L 1.2 1 M 2 2 L 2.2 2 M 3 3 L 4 3");
}

TEST(SubPaths, runOn) {
    struct {
        const char* data;
        double length;
        bool isDashed;
        const char* words;
    } const cases[] = {
        {"M0 0H10V10z", 2, false, "M 0 0 L 10 0 L 10 10 L 0 0 L 2 0"},
        {"M0 0H10V10H0V0z", 0, false, "M 0 0 L 10 0 L 10 10 L 0 10 L 0 0 L 0.2 0"},  // at least two steps
        {"M0 0H1V1z", 5, false, "M 0 0 L 1 0 L 1 1 L 0 0 L 1 0"},                    // at most the segment
        {"M5 0H10V10H0V0z", 2, false, "M 5 0 L 10 0 L 10 10 L 0 10 L 0 0 Z"},        // smooth at its start
        {"M5 0H10V10H0V0z", 2, true, "M 5 0 L 10 0 L 10 10 L 0 10 L 0 0 L 5 0 L 7 0"},
        {"M0 0C9 0 9 0 9 9z", 9, false, "M 0 0 C 9 0 9 0 9 9 L 0 0 C 4.5 0 6.75 0 7.875 1.125"},
        {"M0 0H10V10", 2, false, "M 0 0 L 10 0 L 10 10"},
    };
    for (const auto& c : cases) {
        const Path once = runOn(path(c.data), c.length, 0.1, c.isDashed);
        EXPECT_EQ(words(once), c.words) << c.data;
        EXPECT_EQ(words(runOn(once, c.length, 0.1, c.isDashed)), c.words) << "grows again: " << c.data;
    }
}

TEST(StrokeOutline, areas) {
    StrokeForm form;
    form.width = 2;
    EXPECT_EQ(strokeOutline(path("M0 0H10"), form).tightBox()->height(), 2);
    form.cap = LineCap::kSquare;
    EXPECT_NEAR(strokeOutline(path("M0 0H10"), form).tightBox()->width(), 12, 1e-9);
    form.cap = LineCap::kButt;
    form.dashes = {1, 2, 3};  // 1 2 3 1 2 3
    const Path dashed = strokeOutline(path("M0 0H12"), form);
    EXPECT_EQ(std::count(dashed.verbs().begin(), dashed.verbs().end(), Verb::kMove), 3);
    form.dashes = {1e-9};
    EXPECT_LT(strokeOutline(path("M0 0H1000000"), form).size(), 100U);  // solid, and soon
    EXPECT_TRUE(strokeOutline(Path(), form).isEmpty());
}

TEST(PathText, survives) {
    const Grid grid(2);
    struct {
        const char* data;
        const char* text;
    } const cases[] = {
        {"M0 0L10.005 20.001Z", "M0 0 L10.01 20 Z"},
        {"M-1e-9 1L5 5.0001L5 5", "M0 1 L5 5"},  // no "-0", no line of no length
        {"M-1 0L2 3", "M-1 0 C0 1 1 2 2 3"},     // over x = 0
        {"M1 1l0 0zM2 2L3 3", "M2 2 L3 3"},      // nothing is left of the first
        {"M1 1L1.001 1", ""},
        {"M0 0C1 2 3 4 5 6", "M0 0 C1 2 3 4 5 6"},
    };
    for (const auto& c : cases) EXPECT_EQ(pathText(path(c.data), grid), c.text) << c.data;
    EXPECT_EQ(pointsText({{1, 2}, {-0.001, 4.5}}, grid), "1,2 0,4.5");
    EXPECT_TRUE(ellipseSurvives({5, 5}, 2, 3, grid.step()));
    EXPECT_TRUE(ellipseSurvives({5, 5}, 5, 5, grid.step()));  // exactly 0 is no harm
    EXPECT_FALSE(ellipseSurvives({2.21, 5}, 4, 3, grid.step()));
    EXPECT_FALSE(ellipseSurvives({5, 5}, 0, 3, grid.step()));
}

TEST(ShapeOutline, shapes) {
    struct {
        const char* element;
        const char* words;
    } const cases[] = {
        {"<rect x='1' y='2' width='50%' height='4'/>", "M 1 2 L 51 2 L 51 6 L 1 6 Z"},
        {"<rect width='3' height='4' rx='0' ry='2'/>", "M 0 0 L 3 0 L 3 4 L 0 4 Z"},
        {"<rect width='3' style='width:0' height='4'/>", ""},
        {"<rect width='8' height='4' rx='-1' ry='9'/>",
         "M 4 0 L 4 0 C 6.209 0 8 0.895 8 2 L 8 2 C 8 3.105 6.209 4 4 4 L 4 4 C 1.791 4 0 3.105 0 2 L 0 2 "
         "C 0 0.895 1.791 0 4 0 Z"},
        {"<line x1='1' y2='2'/>", "M 1 0 L 0 2"},
        {"<polyline points='1,2 3,4'/>", "M 1 2 L 3 4"},
        {"<polygon points='1,2 3,4 5,6'/>", "M 1 2 L 3 4 L 5 6 Z"},
        {"<circle r='0'/>", ""},
        {"<ellipse ry='1' rx='auto'/>",
         "M 1 0 C 1 0.552 0.552 1 0 1 C -0.552 1 -1 0.552 -1 0 C -1 -0.552 -0.552 -1 0 -1 C 0.552 -1 1 "
         "-0.552 1 0 Z"},
        {"<path d='M0 0L1e308 1e308l1e308 1e308'/>", ""},
        {"<g/>", ""},
    };
    for (const auto& c : cases) {
        SourceDocument document;
        ASSERT_FALSE(document.read(QByteArray("<svg>") + c.element + "</svg>"));
        Notes notes;
        const Cascade cascade(document, notes);
        EXPECT_EQ(words(outlineOf(*document.root().firstChild(), cascade, {100, 100}, 12)), c.words)
            << c.element;
    }
}

}  // namespace
}  // namespace tznormalize
