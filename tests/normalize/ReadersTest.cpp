// The readers of attribute text: what they take, and where they stop.
#include <gtest/gtest.h>

#include <cmath>

#include "normalize/text/Length.h"
#include "normalize/text/NumberCursor.h"
#include "normalize/text/PathData.h"
#include "normalize/text/Transform.h"
#include "normalize/text/ViewBox.h"
#include "tests/normalize/PathWords.h"

namespace tznormalize {
namespace {

TEST(NumberCursor, lists) {
    struct {
        const char* text;
        std::vector<double> numbers;
    } const cases[] = {
        {"1 2,3 , 4", {1, 2, 3, 4}},
        {".5.5-1+2", {0.5, 0.5, -1, 2}},
        {"1e2-1.5E-2 1e", {100, -0.015, 1}},  // what follows "1" is a unit
        {"12345678901234567890.5 1", {12345678901234567890.5, 1}},
        {"1,,2", {1}},
        {"+-1", {}},
        {"- 1", {}},
        {"1e999 2", {}},
        {"nan inf", {}},
        {" 5. .", {5}},
        {"\u00a0"
         "1",
         {}},
        {"", {}},
    };
    for (const auto& c : cases) EXPECT_EQ(readNumbers(QString::fromUtf8(c.text)), c.numbers) << c.text;
}

TEST(Numbers, shares) {
    EXPECT_EQ(readShare(u" 40% "), 0.4);
    EXPECT_EQ(readShare(u"-2"), -2.0);
    EXPECT_EQ(readShare(u"40px"), std::nullopt);
    EXPECT_EQ(readOpacity(u"150%"), 1.0);
    EXPECT_EQ(readOpacity(u"-1"), 0.0);
    EXPECT_EQ(readOpacity(u"much"), 1.0);
}

TEST(Length, unitsAndAxes) {
    const Viewport viewport{300, 400};
    struct {
        const char* text;
        Axis axis;
        double value;  // not a number: none
    } const cases[] = {
        {"10", Axis::kHorizontal, 10},    {"1in", Axis::kHorizontal, 96},
        {"72PT ", Axis::kVertical, 96},   {"25.4mm", Axis::kVertical, 96},
        {"2.54cm", Axis::kVertical, 96},  {"6pc", Axis::kVertical, 96},
        {"2em", Axis::kVertical, 40},     {"2ex", Axis::kVertical, 20},
        {"1e1em", Axis::kVertical, 200},  {"50%", Axis::kHorizontal, 150},
        {"50%", Axis::kVertical, 200},    {"100%", Axis::kNeither, std::sqrt(125000.0)},
        {"5 px", Axis::kHorizontal, NAN}, {"5ab", Axis::kHorizontal, NAN},
        {"auto", Axis::kHorizontal, NAN}, {"", Axis::kHorizontal, NAN},
    };
    for (const auto& c : cases) {
        const double value = readLength(QString::fromUtf8(c.text), c.axis, viewport, 20).value_or(NAN);
        if (std::isnan(c.value)) {
            EXPECT_TRUE(std::isnan(value)) << c.text;
        } else {
            EXPECT_NEAR(value, c.value, 1e-9) << c.text;
        }
    }
}

TEST(PathData, commands) {
    struct {
        const char* text;
        const char* words;
        bool isComplete;
    } const cases[] = {
        {"M1 2 3 4h5v6H7V8z", "M 1 2 L 3 4 L 8 4 L 8 10 L 7 10 L 7 8 Z", true},
        {"m1,2 3,4", "M 1 2 L 4 6", true},
        {"M0 0l1 0zl0 1", "M 0 0 L 1 0 Z M 0 0 L 0 1", true},  // goes on at the start of what was closed
        {"M0 0c1 0 2 1 2 2s1 2 2 2", "M 0 0 C 1 0 2 1 2 2 C 2 3 3 4 4 4", true},
        {"M0 0s1 2 2 2", "M 0 0 C 0 0 1 2 2 2", true},
        {"M0 0q3 0 3 3t3 3", "M 0 0 C 2 0 3 1 3 3 C 3 5 4 6 6 6", true},
        {"M0 0l1 1t3 3", "M 0 0 L 1 1 C 1 1 2 2 4 4", true},
        {"M0 0a5 5 0 0110 0", "M 0 0 C 0 -2.761 2.239 -5 5 -5 C 7.761 -5 10 -2.761 10 0", true},
        {"M0 0a1 1 0 01 10 0", "M 0 0 C 0 -2.761 2.239 -5 5 -5 C 7.761 -5 10 -2.761 10 0", true},
        {"M0 0a5 0 0 1110 0a3 3 0 110 0", "M 0 0 L 10 0", true},
        {"M5 5z", "M 5 5 Z", true},
        {"M1 1M2 2M3 3L4 4M5 5", "M 3 3 L 4 4", true},
        {" none ", "", true},
        {"", "", true},
        // Faults: what stands before them is drawn.
        {"L1 1", "", false},
        {"M0 0L1 1 2", "M 0 0 L 1 1", false},
        {"M0 0L1 1,L2 2", "M 0 0 L 1 1", false},
        {"M0 0L1 1xL2 2", "M 0 0 L 1 1", false},
        {"M0 0L1 1z2 2", "M 0 0 L 1 1 Z", false},
        {"M0 0L1 1 2 1e999", "M 0 0 L 1 1", false},
        {"M0 0L1 1a5 5 0 2 0 1 1", "M 0 0 L 1 1", false},
    };
    for (const auto& c : cases) {
        bool isComplete = !c.isComplete;
        EXPECT_EQ(words(readPathData(QString::fromUtf8(c.text), &isComplete)), c.words) << c.text;
        EXPECT_EQ(isComplete, c.isComplete) << c.text;
    }
}

TEST(PathData, points) {
    EXPECT_EQ(readPoints(u"1,2 3 4,5-6 7").size(), 3U);
    EXPECT_EQ(readPoints(u"1,2 x 3,4").size(), 1U);
    EXPECT_TRUE(readPoints(u" ").empty());
}

TEST(Transform, lists) {
    struct {
        const char* text;
        Point mapped;  // of (1, 2); not a number: the list is faulty
    } const cases[] = {
        {"", {1, 2}},
        {"none", {1, 2}},
        {"translate(5)", {6, 2}},
        {"translate(5) , scale(2 3) ", {7, 6}},
        {"scale(2)translate(1,1)", {4, 6}},
        {"rotate(90)", {-2, 1}},
        {"rotate(90 1 1)", {0, 1}},
        {"rotate(.25turn)", {-2, 1}},
        {"rotate(100grad)", {-2, 1}},
        {"skewX(45)", {3, 2}},
        {"skewY(45deg)", {1, 3}},
        {"matrix(1 2 3 4 5 6)", {12, 16}},
        {"translateX(5px)scaleY(2)", {6, 4}},
        {"scale (2", {2, 4}},
        {"rotate(90 1)", {NAN, 0}},
        {"scale()", {NAN, 0}},
        {"matrix(1 2 3 4 5)", {NAN, 0}},
        {"scale(2,)", {NAN, 0}},
        {"scale(2) x", {NAN, 0}},
        {"Scale(2)", {NAN, 0}},
        {"scale(2em)", {NAN, 0}},
        {"scale(1e300)scale(1e300)", {NAN, 0}},
    };
    for (const auto& c : cases) {
        const std::optional<Matrix> matrix = readTransform(QString::fromUtf8(c.text));
        EXPECT_EQ(matrix.has_value(), !std::isnan(c.mapped.x)) << c.text;
        if (!matrix) continue;
        EXPECT_LT(distance(matrix->map({1, 2}), c.mapped), 1e-9) << c.text;
    }
}

TEST(ViewBox, fit) {
    struct {
        const char* aspect;
        Point first, last;  // where the corners of a box of 10 x 10 at (1, 1) come to lie in 40 x 20
    } const cases[] = {
        {"", {10, 0}, {30, 20}},
        {"xMinYMin", {0, 0}, {20, 20}},
        {"defer  xMaxYMax meet", {20, 0}, {40, 20}},
        {"xMidYMin slice", {0, 0}, {40, 40}},
        {"xMidYMax slice", {0, -20}, {40, 20}},
        {"none", {0, 0}, {40, 20}},
        {"bogus", {10, 0}, {30, 20}},
    };
    const std::optional<ViewBox> box = readViewBox(u"1,1 10 10");
    ASSERT_TRUE(box);
    for (const auto& c : cases) {
        const Matrix matrix = fitViewBox(*box, QString::fromUtf8(c.aspect), 40, 20);
        EXPECT_LT(distance(matrix.map({1, 1}), c.first), 1e-9) << c.aspect;
        EXPECT_LT(distance(matrix.map({11, 11}), c.last), 1e-9) << c.aspect;
    }
    for (const QStringView text : {u"0 0 0 5", u"0 0 5 -5", u"0 0 5", u"0 0 5px 5", u""}) {
        EXPECT_FALSE(readViewBox(text)) << text.toString().toStdString();
    }
}

}  // namespace
}  // namespace tznormalize
