// Where a drawing's edges lie: which areas are of one colour, and which colours were learnt.
#include <gtest/gtest.h>

#include <QSvgRenderer>

#include "image/culling/PaintedEdges.h"
#include "tests/image/ImageFixture.h"

using tzsvg::Box;
using tzsvg::PaintedEdges;

struct PaintedEdgesTest : ImageTest {
    static QByteArray squareDrawing(const QByteArray& content) {
        return "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 100 100'>" + content + "</svg>";
    }
};

// Over an edge, at 50, 50.
TEST_F(PaintedEdgesTest, areasOfOneColour) {
    const struct {
        const char* over;
        bool isAlike;
    } cases[] = {
        {"", false},
        {"<path d='M-50,0 C0,150 150,150 150,0 z'/>", true},
        {"<g transform='rotate(20)'><circle cx='50' cy='50' r='50' stroke='red'/></g>", true},
        {"<circle cx='50' cy='50' r='1.2'/>", false},
        {"<rect width='99' height='99' opacity='.99'/>", false},
        {"<rect width='99' height='99' fill-opacity='.99'/>", false},
        {"<rect width='99' height='99' fill='none' stroke='red'/>", false},
        {"<rect width='99' height='99' stroke='red' stroke-width='98'/>", false},
        {"<path d='M0,0 h99 v99 h-99 z M20,20 h50 v50 h-50 z' fill-rule='evenodd'/>", false},
        {"<path d='M0,0 h99 v99 h-99 z M20,20 h50 v50 h-50 z' fill-rule='nonzero'/>", true},
        {"<path d='M0,0 h99 v99 h-99 z M20,20 v50 h50 v-50 z' fill-rule='nonzero'/>", false},
        {"<path d='M70,0 L70,99'/>", false},
        {"<rect width='99' height='99'/><rect x='9999' width='9' height='9'/>", false},
    };
    const bool isTold = QByteArray(qVersion()).startsWith("6.4.");  // as isProvenForRows() has it
    for (const auto& [over, isAlike] : cases) {
        QSvgRenderer renderer(
            squareDrawing(QByteArray("<rect width='50' height='200' fill='#0080ff'/>") + over));
        const PaintedEdges edges(renderer, QRectF(0, 0, 100, 100));
        EXPECT_EQ(edges.leaveAlike({49, 49, 51, 51}), isAlike && isTold) << over;
        EXPECT_FALSE(edges.leaveAlike({-2, 198, 0, 202})) << over;
    }
}

// Around a column from x 40 to 60.
TEST_F(PaintedEdgesTest, coloursThatWereLearnt) {
    if (!QByteArray(qVersion()).startsWith("6.4.")) GTEST_SKIP() << "colours are not learnt";
    QSvgRenderer renderer(squareDrawing("<rect x='40' y='-9' width='20' height='999'/>"));
    PaintedEdges edges(renderer, QRectF(0, 0, 100, 100));
    const auto square = [](double x, double y) { return Box::of(QPointF(x, y), 1); };
    EXPECT_FALSE(edges.learntColour(square(50, 50)));
    edges.learn(square(50, 50), 1);
    edges.learn(square(20, 50), 2);
    EXPECT_EQ(edges.learntColour(square(58, 25)), QRgb{1});
    EXPECT_EQ(edges.learntColour(square(5, 75)), QRgb{2});
    EXPECT_FALSE(edges.learntColour(square(40, 50)));
    EXPECT_FALSE(edges.learntColour(square(80, 50)));
    for (int i = 0; i < 100; ++i) edges.learn(square(80, 300 * i), 3);
    EXPECT_FALSE(edges.learntColour(square(20, 50)));
    EXPECT_EQ(edges.learntColour(square(80, 300 * 99)), QRgb{3});
}
