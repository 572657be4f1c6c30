// Tiles of large drawings, which are drawn by renderers of the shapes around them: which shapes those are,
// and that no pixel tells. The longer run is ./bench/tiles-equal.
#include <gtest/gtest.h>

#include <QLoggingCategory>
#include <QSvgRenderer>
#include <algorithm>
#include <numeric>
#include <random>

#include "bench/exact/FeatureDrawings.h"
#include "bench/exact/TileComparison.h"
#include "image/culling/CullingRules.h"
#include "image/culling/DrawingParts.h"
#include "image/culling/ReachMeasuring.h"
#include "tests/image/ImageFixture.h"

using tzsvg::Box;
using tzsvg::DrawingParts;
using tzsvg::PartReach;

namespace {

QByteArray squareSvg(const QByteArray& content, const QByteArray& prolog = {}) {
    return prolog + "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 100 100'>" + content + "</svg>";
}

// What is left of a drawing with the shapes at these places among its shapes.
QByteArray left(const QByteArray& content, const std::vector<size_t>& places) {
    const auto drawing = DrawingParts::of(squareSvg(content));
    if (!drawing) return "(drawn whole)";
    std::vector<uint32_t> shapes;
    shapes.reserve(places.size());
    for (const size_t place : places) shapes.push_back(drawing->shapes().at(place));
    const QByteArray text = drawing->text(drawing->with(shapes));
    return text.mid(text.indexOf('>') + 1).chopped(6);
}

const char kGradient[] = "<defs><linearGradient id='a'/><linearGradient id='b' href='#a'/></defs>";

}  // namespace

struct CullingTest : ImageTest {};

TEST(DrawingParts, keepsWhatAShapeNeeds) {
    const struct {
        QByteArray content;
        std::vector<size_t> places;
        QByteArray left;
    } cases[] = {
        {"<rect/><g a='>'><path/></g><!-- <g> --><circle/>", {1}, "<g a='>'><path/></g>"},
        {"<g><g><rect/></g><g><path/></g></g>", {0}, "<g><g><rect/></g></g>"},
        {"<g><rect/></g><text>a<tspan/></text><rect/>", {}, "<text>a<tspan/></text>"},
        {QByteArray(kGradient) + "<rect fill='url(#b)'/><path/>",
         {0},
         QByteArray(kGradient) + "<rect fill='url(#b)'/>"},
        {QByteArray(kGradient) + "<rect fill='url( #a )'/><path/>",
         {0},
         "<defs><linearGradient id='a'/></defs><rect fill='url( #a )'/>"},
        {QByteArray(kGradient) + "<rect fill='url(#b)'/><path/>", {1}, "<path/>"},
        // A group's paint comes with what is in the group.
        {QByteArray(kGradient) + "<g style='fill:url(#a)'><path/></g>",
         {0},
         "<defs><linearGradient id='a'/></defs><g style='fill:url(#a)'><path/></g>"},
        // Two of one ID: which of them counts is the renderer's to say.
        {"<defs><linearGradient id='a'/><linearGradient id='a'/></defs><rect/>",
         {},
         "<defs><linearGradient id='a'/><linearGradient id='a'/></defs>"},
        // What a use shows, and uses themselves.
        {"<g id='u'><rect/></g><use href='#u'/><path/>", {}, "<g id='u'><rect/></g><use href='#u'/>"},
        {"<rect id='u'/><path/><use xlink:href='xu'/>", {}, "<rect id='u'/><use xlink:href='xu'/>"},
        // What reaches beyond its element.
        {"<rect visibility='visible'/><g style='visibility:hidden'><rect/></g><path/>",
         {},
         "<rect visibility='visible'/><g style='visibility:hidden'><rect/></g>"},
        {"<rect><title>t</title></rect><rect><path/></rect>", {}, "<rect><path/></rect>"},
        {"<style>.a > b, #c { fill: red }</style><rect/>", {}, "<style>.a > b, #c { fill: red }</style>"},
    };
    for (const auto& test : cases)
        EXPECT_EQ(left(test.content, test.places), test.left) << test.content.data();
}

TEST(DrawingParts, isNotOfDrawingsWhoseElementsDependOnEachOther) {
    const QByteArray documents[] = {
        squareSvg("<style>rect + path { fill: red }</style><rect/>"),
        squareSvg("<style>g :first-child { fill: red }</style><rect/>"),
        squareSvg("<style>rect ~ path { fill: red }</style><rect/>"),
        squareSvg("<style>a { visibility: hidden }</style><rect/>"),
        squareSvg("<style>@media all { a { fill: red } }</style><rect/>"),
        squareSvg("<style>\\72 ect { fill: red }</style><rect/>"),
        squareSvg("<rect><animate/></rect>"),
        squareSvg("<rect><s:animate/></rect>"),
        squareSvg("<s:image href='a.png'/><rect/>"),
        squareSvg("<s:style>rect + path { fill: red }</s:style><rect/>"),
        squareSvg("<set/><rect/>"),
        squareSvg("<image href='a.png'/><rect/>"),
        squareSvg("<rect comp-op='src-in'/>"),
        squareSvg("<polyline/><path stroke-dasharray='1'/>"),
        squareSvg("<s:polyline/><path stroke-dasharray='1'/>"),
        squareSvg("<rect fill='&f;'/>", "<!DOCTYPE svg [<!ENTITY f 'url(#a)'>]>"),
        squareSvg("<rect fill='&#117;rl(#a)'/>"),
        squareSvg("&s;<rect/>", "<!DOCTYPE svg [<!ENTITY s '<rect/>'>]>"),
        squareSvg("<rect/>", "<!DOCTYPE svg [<!ATTLIST rect fill CDATA 'red'>]>"),
        squareSvg("<rect/>", "<?xml version='1.0' encoding='iso-8859-1'?>"),
        squareSvg("<rect/>", "<?xml-stylesheet href='a.css'?>"),
        squareSvg("<path d='M3 -9876543V-9876542'/>"),
    };
    for (const QByteArray& document : documents) EXPECT_FALSE(DrawingParts::of(document)) << document.data();
    EXPECT_TRUE(DrawingParts::of(squareSvg("<rect/>",
                                           "<?xml version='1.0' encoding='UTF-8'?><!DOCTYPE svg "
                                           "[<!ENTITY n \"urn:x\">]><!-- a -->")));
}

// Documents whose shapes Qt fills one after another need no markers to be measured.
TEST(DrawingParts, tellsWhetherShapesAreFilledInOrder) {
    const struct {
        const char* content;
        bool isInOrder;
    } cases[] = {
        {"<g><rect width='9' height='9'/><path/></g><circle/><ellipse/><polygon/>", true},
        {"<rect width='0' height='9'/><rect width='9' height='0.0'><title>t</title></rect><path/>", true},
        {"<style>a { fill: red }</style><metadata><x/></metadata><g/><path transform='scale(2)'/>", true},
        {"<defs><clipPath id='c'><path/></clipPath><linearGradient id='a' gradientTransform='scale(2)'/>"
         "</defs><path/>",
         true},
        {"<path/><line/>", false},
        {"<path/><polyline/>", false},
        {"<path/><text>a</text>", false},
        {"<path/><s:text>a</s:text>", false},
        {"<path/><path visibility='hidden'/>", false},
        {"<path/><path id='a'/><path fill='url(#a)'/>", false},
        {"<path/><clipPath><path/></clipPath>", false},
        {"<path><path/></path>", false},
        {"<path/><switch><path/></switch>", false},
        {"<g transform='scale(2)'><path/></g>", false},
        {"<g style='transform:scale(2)'><path/></g>", false},
        {"<style>g { transform: scale(2) }</style><g><path/></g>", false},
    };
    for (const auto& [content, isInOrder] : cases) {
        const auto drawing = DrawingParts::of(squareSvg(content));
        ASSERT_TRUE(drawing) << content;
        EXPECT_EQ(drawing->isFilledInOrder(), isInOrder) << content;
    }
}

// Each shape is at x 50, y 50; what it reaches is asked for at a point, among other shapes, which are filled
// in order or, with a line, are not.
TEST_F(CullingTest, measuresWhatIsPainted) {
    const struct {
        const char* shape;
        double distance;  // beyond the shape's own edge at x 50, to the left
        bool reached;
    } cases[] = {
        {"<rect x='50' y='40' width='20' height='20'/>", 0.5, false},
        {"<rect x='50' y='40' width='20' height='20' fill='none'/>", -5, false},
        {"<g display='none'><rect x='50' y='40' width='20' height='20'/></g>", 45, true},  // not measured
        {"<g stroke='red' stroke-width='10'><rect x='50' y='40' width='20' height='20'/></g>", 4, true},
        {"<g stroke='red' stroke-width='10'><circle cx='60' cy='50' r='10'/></g>", 45, false},
        {"<path stroke='red' stroke-width='6' stroke-miterlimit='20' d='M70 40 50 50 70 60'/>", 6, true},
        {"<line stroke='red' x1='50' y1='50' x2='50' y2='50' stroke-linecap='round' stroke-width='10'/>", 4,
         true},
        {"<g transform='translate(-10)'><rect x='50' y='40' width='20' height='20'/></g>", 9, true},
        {"<g transform='translate(1e15)'><g transform='translate(-1e15)'>"
         "<rect x='50' y='40' width='20' height='20'/></g></g>",
         45, true},  // what is lost may be pixels
        {"<rect x='50' y='40' width='20' height='20' stroke='red' stroke-width='4' "
         "vector-effect='non-scaling-stroke'/>",
         45, true},  // any width, seen from afar
        {"<path stroke='red' fill='none' d='M51 1050 L1050 -950'/>", 0, true},
        {"<path stroke='red' fill='none' d='M53 1050 L1050 -950'/>", 0, false},
    };
    const char kOthers[] = "<path d=''/><rect x='1e3' width='1' height='1'/><rect width='0' height='1'/>";
    for (const auto& test : cases) {
        for (const char* const line : {"", "<line x1='1e3' x2='1e3'/>"}) {
            const QByteArray content = kOthers + QByteArray(test.shape) + line;
            const auto drawing = DrawingParts::of(squareSvg(content));
            ASSERT_TRUE(drawing) << test.shape;
            QSvgRenderer whole(squareSvg(content));
            const auto reach = measureReach(*drawing, QRectF(0, 0, 100, 100), whole);
            ASSERT_TRUE(reach) << test.shape;
            const auto found = reach->reaching(Box::of(QPointF(50 - test.distance, 50), 0.1));
            ASSERT_EQ(found.size(), test.reached ? 1U : 0U) << test.shape << " at " << test.distance;
            if (test.reached) {
                EXPECT_EQ(reach->partsOf(found).front(), drawing->shapes().at(2));
            }
        }
    }
}

TEST(PartReach, answersAsALookAtEveryShape) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> at(-50, 150);
    const QPointF origin(1e6, -3e5);
    const auto point = [&] { return origin + QPointF(at(random), at(random)); };
    PartReach reach(origin);
    std::vector<Box> all;
    for (uint32_t i = 0; i < 500; ++i) {
        Box box;
        for (uint32_t p = 0; p < 1 + i % 5; ++p) box.add(Box::of(point(), 0.0));
        all.push_back(box);
        reach.add(2 * i, box);
    }
    reach.finish(100);
    std::vector<uint32_t> numbers(all.size());
    std::iota(numbers.begin(), numbers.end(), 0);
    size_t count = 0;
    for (int i = 0; i < 200; ++i) {
        const Box area = Box::of(point(), 0.5 + i % 20);
        const std::vector<uint32_t> found = reach.reaching(area);
        EXPECT_EQ(reach.reaching(area, reach.reaching(area.grown(30), numbers)), found);
        ASSERT_FALSE(found.empty());
        EXPECT_EQ(reach.partsOf({found.back()}).front(), 2 * found.back());
        count += found.size();
        for (uint32_t shape = 0; shape < all.size(); ++shape) {
            // What is near the edge may be said of either: numbers are rounded so that shapes reach farther.
            const bool isFound = std::binary_search(found.begin(), found.end(), shape);
            EXPECT_TRUE(isFound || !all[shape].touches(area)) << shape;
            EXPECT_TRUE(!isFound || all[shape].touches(area.grown(0.01))) << shape;
        }
    }
    EXPECT_GT(count, 10000U);
}

// Small cells everywhere, and as it is usually done. Fails when a rule of culling/CullingRules.h is dropped.
TEST_F(CullingTest, noPixelDiffers) {
    QLoggingCategory::setFilterRules(QStringLiteral("qt.svg*=false"));
    uint64_t ofCells = 0;
    for (uint32_t i = 0; i < 26; ++i) {
        // Besides the first: one with nested svg elements, one with few edges.
        const uint32_t number = i < 24 ? i : i == 24 ? 1039 : 1013;
        write(QByteArray::fromStdString(tzbench::featureDrawing(number)));
        const bool usual = number % 8 == 7;
        const auto compared =
            tzbench::compareTiles(path(), 12, 0.2, number,
                                  usual ? tzsvg::CullingSettings() : tzsvg::CullingSettings{1, 0, 60, 0, 0});
        EXPECT_EQ(compared.different, 0U) << number;
        ofCells += compared.ofCells;
    }
    EXPECT_GT(ofCells, 60U);
}

// A change is noticed by tiles that no renderer of the whole drawing draws.
TEST_F(CullingTest, changedDrawing) {
    const auto rects = [](const char* color) {
        QByteArray content;
        for (int i = 0; i < 400; ++i) {
            content += "<rect x='" + QByteArray::number(i % 20 * 5) + "' y='" +
                       QByteArray::number(i / 20 * 5) + "' width='5' height='5' fill='" + color + "'/>";
        }
        return squareSvg(content);
    };
    write(rects("#ff0000"), 60);
    const CTzPtr<ITzImage> image = load();
    const auto tiles = image.query<ITzTileImage>();
    const auto color = [&](uint32_t column) {
        ITzImage* tile = nullptr;
        EXPECT_EQ(tiles->tile(4, {column, 3}, &tile), kTzOk);
        return pixelsOf(*CTzPtr<ITzImage>::adopt(tile), {256, 256}).at(1000);
    };
    EXPECT_EQ(color(3), (Pixel{1, 0, 0, 1}));
    EXPECT_EQ(color(4), (Pixel{1, 0, 0, 1}));
    write(rects("#0000ff"), 50);
    EXPECT_EQ(color(5), (Pixel{0, 0, 1, 1}));
    EXPECT_EQ(color(3), (Pixel{0, 0, 1, 1}));
    QFile::remove(path());
    EXPECT_EQ(color(6), (Pixel{0, 0, 0, 0}));
}
