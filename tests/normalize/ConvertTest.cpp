// The walk: each drawing looks the same normalized, after the round trip of that, and is the same text
// normalized twice.
#include <gtest/gtest.h>

#include "normalize/Normalize.h"
#include "tests/normalize/Likeness.h"

namespace tznormalize {
namespace {

TEST(Convert, structure) {
    expectAlike({
        {"nothing", ""},
        {"inherited from groups",
         "<g fill='#08f' stroke='red' stroke-width='4'><rect x='10' y='10' width='30' height='30'/>"
         "<g fill='none' stroke-opacity='.5'><circle cx='60' cy='60' r='20'/></g></g>"},
        {"transforms of groups and shapes",
         "<g transform='translate(50 20) rotate(30)'><rect width='40' height='20' transform='skewX(20)'/>"
         "<ellipse cx='10' cy='50' rx='20' ry='8' transform='scale(1.2)'/></g>"},
        {"use, with a style of its own",
         "<defs><rect id='r' width='20' height='20'/></defs><use xlink:href='#r' x='5' y='5' fill='green'/>"
         "<use href='#r' transform='translate(60 60) rotate(45)' opacity='.5'/>"},
        {"use of use, of what is drawn",
         "<g id='a'><circle id='c' cx='20' cy='20' r='10'/></g><g id='b'><use xlink:href='#a' x='30'/></g>"
         "<use xlink:href='#b' y='40'/>"},
        {"use in a circle", "<g id='a'><rect width='9' height='9'/><use xlink:href='#a' x='9'/></g>"},
        {"symbols",
         "<symbol id='s' viewBox='0 0 10 10'><path d='M0 5L5 0L10 5L5 10Z'/></symbol><symbol id='t'><path "
         "d='M0 0H9V9'/></symbol>"
         "<use xlink:href='#s' x='10' y='10' width='40' height='30'/><use href='#s' x='60' y='60' width='30' "
         "height='30'/>"
         "<use href='#t' transform='rotate(45)' x='60'/>"},
        {"nested svg, clipped and fitted",
         "<svg x='10' y='20' width='50' height='40' viewBox='0 0 10 10' preserveAspectRatio='xMinYMax slice'>"
         "<circle cx='5' cy='5' r='7' fill='#a40'/></svg><svg x='50%' y='70%' width='30%' height='20%'>"
         "<rect width='50%' height='200%'/></svg>"},
        {"switch",
         "<switch><rect systemLanguage='de' width='50' height='50' fill='red'/><g systemLanguage='fr, en'>"
         "<rect width='20' height='50' fill='green'/></g><rect width='50' height='50' "
         "fill='blue'/></switch>"},
        {"what is not shown",
         "<rect width='50' height='50' display='none'/><g visibility='hidden'><rect width='9' height='9'/>"
         "<rect x='50' width='9' height='9' visibility='visible'/></g><a href='x'><rect y='50' width='9' "
         "height='9'/></a>"
         "<path d=''/><path/><rect width='0' height='5'/><circle cx='5' cy='5' r='-1'/>"},
        {"order of shapes and groups",
         "<rect width='50' height='50' fill='red'/><g><rect x='10' y='10' width='50' height='50' "
         "fill='green'/></g>"
         "<circle cx='50' cy='50' r='20' fill='blue'/><g><rect x='40' y='40' width='30' height='8'/></g>"
         "<rect x='45' y='30' width='10' height='60' fill='yellow'/>"},
    });
}

TEST(Convert, looks) {
    expectAlike({
        {"colours of all kinds",
         "<rect width='20' height='20' fill='rgb(255,0,128)'/><rect x='30' width='20' height='20' "
         "fill='#08fc'/>"
         "<rect y='30' width='20' height='20' fill='hsl(120,100%,30%)' stroke='teal'/>"
         "<g color='purple'><rect x='30' y='30' width='20' height='20' fill='none' "
         "stroke='currentColor'/></g>"},
        {"areas of a single curve",
         "<path d='M10 10C90 10 90 50 10 50' fill='red'/>"
         "<path d='M10 60Q50 120 90 60' fill='#fc8' stroke='black' stroke-width='4'/>"},
        {"joins and caps where outlines close",
         "<g fill='none' stroke='#000' stroke-width='10'><path d='M10 10H40V40H10Z'/>"
         "<path d='M60 10H90V40H60Z' stroke-linejoin='round'/><path d='M10 60L40 90H10Z' "
         "stroke-linejoin='bevel'/>"
         "<path d='M60 60H90V90ZM70 63' stroke-linecap='square'/></g>"},
        {"dashes",
         "<g fill='none' stroke='navy' stroke-width='4' stroke-dasharray='10 5%,2'><circle cx='30' cy='30' "
         "r='20'/>"
         "<rect x='60' y='10' width='30' height='30' stroke-dashoffset='7'/><path d='M10 70H90' "
         "stroke-linecap='round'/>"
         "<path d='M10 90H90' stroke-dasharray='0 8' stroke-linecap='round'/></g>"},
        {"dots",
         "<path d='M20 20zM50 20h0' stroke='red' stroke-width='20' stroke-linecap='round'/>"
         "<path d='M80 20z' stroke='red' stroke-width='20' stroke-linecap='square'/>"
         "<path d='M20 60z' stroke='red' stroke-width='20'/>"},
        {"strokes with gradients",
         "<linearGradient id='g'><stop stop-color='red'/><stop offset='1' "
         "stop-color='blue'/></linearGradient>"
         "<path d='M20 20Q50 90 80 20' fill='none' stroke='url(#g)' stroke-width='12' "
         "stroke-linecap='round'/>"
         "<rect x='20' y='70' width='60' height='20' fill='#ccc' stroke='url(#g)' stroke-width='3'/>"},
        {"strokes under uneven scales",
         "<g transform='scale(3 .5)' fill='none' stroke='#060' stroke-width='6'><circle cx='15' cy='60' "
         "r='8'/>"
         "<path d='M5 120L25 190' stroke-dasharray='20 10'/></g>"},
        {"stroke before fill",
         "<circle cx='50' cy='50' r='30' fill='#fc0' stroke='#000' stroke-width='20' paint-order='stroke' "
         "stroke-opacity='.5'/>"},
        {"even-odd and non-zero",
         "<path d='M10 10H90V90H10ZM30 30H70V70H30Z' fill-rule='evenodd' fill='#630'/>"
         "<path d='M35 35H65V65H35ZM45 45H55V55H45Z' fill='#036'/>"},
        {"turned circles, rectangles with corners",
         "<circle cx='30' cy='30' r='20' stroke='red' stroke-width='4' transform='rotate(20)'/>"
         "<rect x='55' y='55' width='40' height='30' rx='8' stroke='red' stroke-width='4'/>"
         "<rect x='5' y='60' width='40' height='30' rx='80' ry='5'/>"},
        {"lines over x = 0",
         "<g transform='translate(50 0)'><path d='M-40 10L40 12M-30.3 30L60.6 31' stroke='#000' fill='none'/>"
         "<circle cx='0' cy='60' r='20'/></g><path transform='translate(-10 0)' d='M-5 90L70 85L70 95Z'/>"},
        {"opacity of shapes and groups",
         "<g opacity='.4'><rect x='10' y='10' width='50' height='50'/><rect x='40' y='40' width='50' "
         "height='50'/></g>"
         "<rect x='60' width='30' height='30' opacity='50%' fill-opacity='.5' stroke='red' stroke-width='6'/>"
         "<g opacity='0'><rect width='99' height='99'/></g>"},
        {"blend modes",
         "<rect width='60' height='60' fill='#0ff'/>"
         "<rect x='30' y='30' width='60' height='60' fill='#f0f' style='mix-blend-mode:multiply'/>"},
    });
}

std::string normalized(const char* content) {
    return normalize(content, QString()).document.toStdString();
}

TEST(Convert, pages) {
    const struct {
        const char* name;
        const char* drawing;
    } rows[] = {
        {"units",
         "<svg xmlns='http://www.w3.org/2000/svg' width='20mm' height='2cm'>"
         "<circle cx='1cm' cy='10mm' r='20%'/></svg>"},
        {"a tiny page",
         "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 .02 .02'>"
         "<path d='M.001.001L.0185.01L.01.0185Z' stroke='red' stroke-width='1e-3'/></svg>"},
        {"a huge page",
         "<svg xmlns='http://www.w3.org/2000/svg' viewBox='-1e6 -1e6 2e6 2e6'>"
         "<circle r='8e5' fill='none' stroke='#00f' stroke-width='1e5'/></svg>"},
        {"a view box elsewhere, stretched",
         "<svg xmlns='http://www.w3.org/2000/svg' viewBox='-50 20 100 40' width='90' height='90' "
         "preserveAspectRatio='none'><ellipse cy='40' rx='40' ry='18'/></svg>"},
        {"a view box fitted",
         "<svg xmlns='http://www.w3.org/2000/svg' viewBox='10 10 100 40' width='90' height='90' "
         "preserveAspectRatio='xMaxYMin slice'><rect x='15' y='15' width='90' height='30' rx='9'/></svg>"},
        {"shapes above and beside the page",
         "<svg xmlns='http://www.w3.org/2000/svg' width='90' height='90'><circle cx='10' cy='-10.5' r='40'/>"
         "<rect x='-500' y='60' width='550' height='500' fill='red'/><circle cx='300' r='9'/></svg>"},
        {"shapes that reach far over the page",
         "<svg xmlns='http://www.w3.org/2000/svg' width='90' height='90'><circle cx='50' cy='50' r='900' "
         "fill='#fc0'/>"
         "<path d='M-300 50C-300 -50 50 20 60 50S400 300 60 400z M20 20H80V80H20z' fill='#08f' "
         "fill-rule='evenodd'/>"
         "<path d='M-1e5 45L1e5 41M-700 9C-99 -99 99 199 999 9' stroke='#000' stroke-width='3' fill='none'/>"
         "<path d='M70 1e4V20H1e4' fill='none' stroke='red' stroke-width='6'/></svg>"},
        {"dashed lines that reach far over the page",
         "<svg xmlns='http://www.w3.org/2000/svg' width='90' height='90'><g stroke='#000' stroke-width='9' "
         "stroke-dasharray='17,9,5'><path d='M-900 30L900 70' stroke-dashoffset='8'/>"
         "<line x1='20' y1='700' x2='20' y2='40' transform='scale(2)'/></g></svg>"},
        {"masked and filtered beside the page",
         "<svg xmlns='http://www.w3.org/2000/svg' width='90' height='90'><mask id='m'><rect width='60' "
         "height='500' fill='#fff'/></mask><filter id='in' x='-6' width='9'><feOffset dx='-200'/></filter>"
         "<g mask='url(#m)'><path d='M-400 20H400V60H-400z' fill='#08f'/><circle cx='50' cy='300' "
         "r='40'/></g>"
         "<rect x='250' y='30' width='30' height='30' fill='red' filter='url(#in)'/></svg>"},
        {"a root with style",
         "<svg xmlns='http://www.w3.org/2000/svg' width='90' height='90' opacity='.5' fill='#080' "
         "stroke='#000'>"
         "<circle cx='50' cy='50' r='30'/><rect width='50' height='50'/></svg>"},
    };
    for (const auto& row : rows) EXPECT_EQ(whatDiffers(row.drawing).toStdString(), "") << row.name;
    // What reaches far does not widen the page's outline far.
    EXPECT_NE(normalized("<svg xmlns='http://www.w3.org/2000/svg' width='100' height='100'>"
                         "<path d='M0 50H900' stroke='red'/><circle cx='50' cy='50' r='500'/></svg>")
                  .find(R"(points="-5,0 107,0 107,110 -5,110 -5,0")"),
              std::string::npos);
    EXPECT_NE(normalized("<svg xmlns='http://www.w3.org/2000/svg' width='100' height='100'>"
                         "<path d='M0 50H900' stroke='red' stroke-dasharray='3'/></svg>")
                  .find(R"(points="0,0 107,0 107,100 0,100 0,0")"),
              std::string::npos);
    // Nor a narrow page's, nor what is never seen.
    const std::string effects =
        "<mask id='m'><rect width='9' height='9' fill='#fff'/></mask>"
        "<filter id='f'><feGaussianBlur stdDeviation='2'/></filter><filter id='none'/>";
    const char* const pageAlone = R"(points="0,0 20,0 20,200 0,200 0,0")";
    const char* const littleMore = R"(points="-2,0 22,0 22,200 -2,200 -2,0")";
    const struct {
        const char* shape;
        const char* outline;
    } unseen[] = {
        {"<path d='M-15 50H34V60H-15z'/>", littleMore},
        {"<g mask='url(#m)'><path d='M-90 5H90V9z'/><path d='M0 900H9V990z'/></g>", littleMore},
        {"<path d='M0 900H9V990z' filter='url(#f)'/>", pageAlone},
        {"<g filter='url(#none)'><path d='M0 900H9V990z'/></g>", pageAlone},
    };
    for (const auto& [shape, outline] : unseen) {
        const std::string drawing = "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='200'>" +
                                    effects + "<rect width='20' height='200'/>" + shape + "</svg>";
        EXPECT_NE(normalized(drawing.c_str()).find(outline), std::string::npos) << shape;
    }
}

TEST(Convert, namesAndAttributesOfGroupsStay) {
    const std::string out = normalized(
        "<svg xmlns='http://www.w3.org/2000/svg' xmlns:i='urn:i' width='9' height='9' id='root'><g "
        "id='layer' i:label='A &amp; B' "
        "class='k' data-n='1' transform='scale(2)' style='fill:red'><g><rect id='r' width='1' "
        "height='1'/></g>"
        "<circle id='r' r='1'/></g></svg>");
    EXPECT_NE(out.find(R"(<g id="layer" i:label="A &amp; B" class="k" data-n="1">)"), std::string::npos)
        << out;
    EXPECT_NE(out.find(R"(xmlns:i="urn:i")"), std::string::npos);
    EXPECT_NE(out.find(R"(id="root")"), std::string::npos);
    // A stroke that does not scale; librsvg draws it scaled.
    EXPECT_NE(normalized("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 18 18' width='180' "
                         "height='180'><path d='M0 0H2' "
                         "transform='scale(4)' stroke='red' vector-effect='non-scaling-stroke'/></svg>")
                  .find(R"(stroke-width="0.1")"),
              std::string::npos);
    // The second of two with the same id goes without.
    EXPECT_EQ(out.find(R"(id="r")"), out.rfind(R"(id="r")")) << out;
}

// Else it would show 12 x 10 of the units and be larger than the drawing.
TEST(Convert, imagesHaveWholeUnits) {
    const auto rootOf = [](const QByteArray& size, WrittenFor writtenFor) {
        const QByteArray content =
            "<svg xmlns='http://www.w3.org/2000/svg' " + size + "><circle r='1'/></svg>";
        const std::string root = normalize(content, QString(), writtenFor).document.toStdString();
        const size_t at = root.find("width=");
        return root.substr(at, root.find(" viewBox") - at);
    };
    const QByteArray broken = "width='12.75' height='10.5'";
    EXPECT_EQ(rootOf(broken, WrittenFor::kRoundTrip), R"(width="12.75" height="10.5")");
    EXPECT_EQ(rootOf(broken, WrittenFor::kImage), R"(width="1275" height="1050")");
    EXPECT_EQ(rootOf("width='12' height='10'", WrittenFor::kImage), R"(width="12" height="10")");
    EXPECT_EQ(rootOf("viewBox='0 0 1 .3333333333'", WrittenFor::kImage), R"(width="10000" height="3333.3")");
}

// Else a large drawing is half as long again, and is read so several times for its first tile.
TEST(Convert, imagesHoldOnlyWhatIsSeen) {
    const struct {
        const char* content;
        const char* written;
    } rows[] = {
        {"<g id='layer' class='k' data-n='1'><rect id='r' width='9' height='9'/></g>",
         R"(<g><polygon points="0,0 9,0 9,9 0,9" fill="#000000"/></g>)"},
        {"<path d='M6 9H9' stroke='red' stroke-width='2' transform='scale(1 .5)'/>",
         R"(<g><path d="M6 4 L9 4 L9 5 L6 5 L6 4 Z" fill="#ff0000"/></g>)"},
        {"<path d='M2 9H8' stroke='red'/>",
         R"(<g><path d="M2 9 L8 9" fill="none" stroke="#ff0000" stroke-width="1"/></g>)"},
        {"<rect width='9' height='9' fill='none'/>", "<g/>"},
    };
    for (const auto& [content, written] : rows) {
        const QByteArray drawing =
            "<svg xmlns='http://www.w3.org/2000/svg' id='root' width='20' height='20'>" +
            QByteArray(content) + "</svg>";
        const QByteArray text = normalize(drawing, QString(), WrittenFor::kImage).document;
        const QByteArray root =
            R"(<svg xmlns="http://www.w3.org/2000/svg" version="1.1" width="20" height="20" )"
            R"(viewBox="0 0 20 20">)";
        EXPECT_EQ(text.mid(text.indexOf("<svg")).toStdString(), (root + written + "</svg>\n").toStdString());
    }
}

TEST(Convert, hostileDrawingsAreBounded) {
    QByteArray bomb =
        "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><g id='a0'><path d='M0 0H1'/></g>";
    for (int i = 1; i < 20; ++i) {
        const QByteArray use = "<use href='#a" + QByteArray::number(i - 1) + "'/>";
        bomb += "<g id='a" + QByteArray::number(i) + "'>" + use + use + use + use + "</g>";
    }
    EXPECT_EQ(normalize(bomb + "</svg>", QString()).refused.refusal, Refusal::kTooManyElements);

    QByteArray chain =
        "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect id='c0' width='5' height='5'/>";
    for (int i = 1; i < 500; ++i) {
        chain += "<g id='c" + QByteArray::number(i) + "' opacity='.9'><use href='#c" +
                 QByteArray::number(i - 1) + "'/></g>";
    }
    EXPECT_FALSE(normalize(chain + "</svg>", QString()).refused);

    const Normalized fine = normalize(
        "<svg xmlns='http://www.w3.org/2000/svg' width='90' height='90'><path stroke='red' "
        "stroke-dasharray='.001' d='M0 0" +
            QByteArray("H9H0").repeated(150) + "'/></svg>",
        QString());
    EXPECT_FALSE(fine.document.contains("dasharray"));
    ASSERT_FALSE(fine.notes.list().empty());
    EXPECT_EQ(fine.notes.list().front().attribute, QStringLiteral("stroke-dasharray"));

    for (const char* path : {"M1e300 1e300L-1e300 2", "M0 0L1e38 1e38", "M1e15 0h1v1z"}) {
        const QByteArray drawing =
            QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><path d='") + path +
            "' stroke='red' transform='scale(1e200,1e100)'/></svg>";
        EXPECT_FALSE(normalize(drawing, QString()).refused) << path;
    }
}

}  // namespace
}  // namespace tznormalize
