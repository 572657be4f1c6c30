// Text: each drawing looks the same normalized, after the round trip of that, and is the same text normalized
// twice. librsvg finds its fonts as the normalizer does, whichever are installed.
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <cmath>

#include "normalize/Normalize.h"
#include "tests/normalize/Likeness.h"
#include "tests/normalize/Pages.h"

namespace tznormalize {
namespace {

TEST(Text, fonts) {
    expectAlike({
        {"the default family", "<text x='2' y='60' font-size='24'>Hamfi AVT</text>"},
        {"families: generic, missing, quoted",
         "<g font-size='20'><text x='2' y='20' font-family='sans-serif'>Sans fi</text><text x='2' y='45' "
         "font-family='No Such, monospace'>Mono</text><text x='2' y='70' font-family='\"No Such\", "
         "serif'>Serif</text><text x='2' y='95' font-family='No Such'>None</text></g>"},
        {"weights, slants, widths",
         "<g font-size='18' font-family='sans-serif'><text x='2' y='20' font-weight='bold'>Bold</text><text "
         "x='2' "
         "y='45' font-weight='600' font-style='italic'>Half</text><text x='2' y='70' "
         "font-weight='200'>Light</text>"
         "<text x='2' y='95' font-stretch='condensed'>Condensed</text></g>"},
        {"the shorthand and units",
         "<text x='2' y='40' style=\"font:italic bold 20px/1.2 'DejaVu Serif', serif\">Short</text><g "
         "font-size='8'><text x='1em' y='9em' font-size='2.5em'>Em</text></g>"},
        {"tiny and huge in their space",
         "<text x='1' y='5' font-size='2' transform='scale(8)'>Tiny</text><text y='9000' font-size='3000' "
         "transform='scale(.01)'>Huge</text>"},
        {"decomposed and other scripts",
         "<text x='2' y='40' font-size='20' font-family='DejaVu Sans'>e\xcc\x81\xc3\xa9 &#8364; "
         "\xce\xa9\xd0\x96</text>"
         "<text x='2' y='80' font-size='20' font-family='DejaVu "
         "Sans'>\xd9\x85\xd8\xb1\xd8\xad\xd8\xa8\xd8\xa7</text>"},
    });
}

TEST(Text, places) {
    expectAlike({
        {"spans, shifts, new lines",
         "<text x='5' y='20' dx='2' dy='3' font-size='14'>one<tspan dx='5' dy='10' "
         "fill='red'>two</tspan>rest<tspan "
         "x='10' y='70'>three</tspan><tspan x='50' dy='1em'>four</tspan></text>"},
        {"anchors",
         "<g font-size='12'><text x='50' y='20' text-anchor='middle'>mid <tspan "
         "font-weight='bold'>bold</tspan> "
         "i<tspan x='50' y='40'>second line</tspan></text><text x='98' y='70' text-anchor='end'>the "
         "end</text></g>"},
        {"indented lines",
         "<text text-anchor='middle' font-size='14'>\n  <tspan x='50' y='30'>First</tspan>\n  <tspan x='50' "
         "y='60'>Second</tspan>\n</text>"},
        {"white space",
         "<text x='2' y='20' font-size='14'>  a \t b\nc  <tspan> d</tspan> </text><text x='2' y='50' "
         "font-size='14' "
         "xml:space='preserve'>  a  b\nc</text>"},
        {"letter spacing",
         "<text x='5' y='30' letter-spacing='3' font-size='14'>spaced</text><text x='50' y='60' "
         "text-anchor='middle' letter-spacing='4' font-size='14'>mid</text>"},
        {"baseline shifts",
         "<text x='5' y='50' font-size='24'>x<tspan baseline-shift='super' font-size='14'>2</tspan>y<tspan "
         "baseline-shift='sub' font-size='14'>i</tspan>z<tspan baseline-shift='20%'>3</tspan></text>"},
        {"lines along it",
         "<g font-size='22'><text x='5' y='25' text-decoration='underline'>under</text><text x='5' y='60' "
         "text-decoration='line-through'>through</text><text x='5' y='92' "
         "text-decoration='overline'>over</text></g>"},
        {"right to left",
         "<text x='95' y='50' direction='rtl' font-family='DejaVu Sans' "
         "font-size='20'>\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d abc</text>"},
        {"vertical", "<text x='50' y='5' writing-mode='tb' font-size='24'>Down</text>"},
    });
}

TEST(Text, looks) {
    expectAlike({
        {"fill and stroke",
         "<text x='5' y='60' font-size='40' font-weight='bold' fill='#fc0' stroke='red' "
         "stroke-width='2'>Str</text>"},
        {"a gradient in the box of all",
         "<linearGradient id='g'><stop stop-color='red'/><stop offset='1' "
         "stop-color='blue'/></linearGradient><text "
         "x='5' y='60' font-size='40' fill='url(#g)'>G<tspan font-weight='bold'>ra</tspan></text>"},
        {"transforms and opacity",
         "<text transform='translate(10 80) rotate(-30) scale(1.5 1)' font-size='24' "
         "opacity='.5'>Turned</text>"},
        {"in clip paths, masks, patterns",
         "<clipPath id='c'><text x='5' y='40' font-size='40' font-weight='bold'>CLIP</text></clipPath><rect "
         "width='100' "
         "height='50' fill='green' clip-path='url(#c)'/><mask id='m'><text x='5' y='90' font-size='40' "
         "fill='#fff'>M</text></mask><rect y='50' width='50' height='50' fill='purple' "
         "mask='url(#m)'/><pattern id='p' "
         "width='25' height='15' patternUnits='userSpaceOnUse'><text y='12' "
         "font-size='12'>Pa</text></pattern><rect "
         "x='50' y='50' width='50' height='50' fill='url(#p)'/>"},
        {"used, referred to, linked",
         "<defs><text id='u' font-size='18'>used</text><text id='r'>referred</text></defs><use "
         "xlink:href='#u' x='10' "
         "y='25' fill='red'/><text x='10' y='55' font-size='16'><tref xlink:href='#r'/></text><text x='10' "
         "y='85' "
         "font-size='16'>a <a xlink:href='x'><tspan fill='blue'>link</tspan></a></text>"},
        {"hidden parts",
         "<text x='5' y='50' font-size='20'>a<tspan visibility='hidden'>bb</tspan>c<tspan "
         "display='none'>dd</tspan>e</text>"},
    });
}

// The left edge of each outline that the only group holds, rounded.
std::vector<int> leftEdges(const char* text) {
    static const QRegularExpression paths(QStringLiteral(" d=\"([^\"]*)\""));
    static const QRegularExpression numbers(QStringLiteral("-?[0-9.]+"));
    std::vector<int> edges;
    const QString document = QString::fromUtf8(normalizedPage(text).document);
    for (auto path = paths.globalMatch(document); path.hasNext();) {
        for (const QString& part : path.next().captured(1).split(QLatin1Char('M'))) {
            double left = 1e9;
            int index = 0;
            for (auto at = numbers.globalMatch(part); at.hasNext(); ++index) {
                const double value = at.next().captured().toDouble();
                if (index % 2 == 0) left = std::min(left, value);
            }
            if (index > 0) edges.push_back(int(std::lround(left)));
        }
    }
    return edges;
}

// What librsvg does not know; the letter l is one upright bar.
TEST(Text, letterByLetter) {
    const std::vector<int> edges =
        leftEdges("<text y='50' font-size='10' font-family='DejaVu Sans'>l</text>");
    ASSERT_EQ(edges.size(), 1U);
    const int bearing = edges[0];
    const struct {
        const char* text;
        std::vector<int> expected;  // where the letters are, without their bearing
    } rows[] = {
        {"<text x='10 30 50' y='50' font-size='10' font-family='DejaVu Sans'>lll</text>", {10, 30, 50}},
        {"<text x='10' dx='0 20 20' y='50' font-size='10' font-family='DejaVu Sans'>lll</text>",
         {10, 33, 56}},
        {"<text y='50' font-size='10' font-family='DejaVu Sans' x='10 20'><tspan x='50'>l</tspan>l</text>",
         {50, 20}},
        {"<text x='10' textLength='100' y='50' font-size='10' font-family='DejaVu Sans'>lll</text>",
         {10, 59, 107}},
        {"<text x='10' word-spacing='20' y='50' font-size='10' font-family='DejaVu Sans'>l l</text>",
         {10, 36}},
        {"<path id='p' d='M10 50H190' fill='none'/><text font-size='10' font-family='DejaVu Sans'><textPath "
         "href='#p' startOffset='50%'>l</textPath></text>",
         {100}},
        {"<path id='p' d='M10 50H190' fill='none'/><text font-size='10' text-anchor='end' "
         "font-family='DejaVu "
         "Sans'><textPath href='#p' startOffset='100%'>l</textPath></text>",
         {187}},
    };
    for (const auto& row : rows) {
        std::vector<int> found = leftEdges(row.text);
        ASSERT_EQ(found.size(), row.expected.size()) << row.text;
        for (size_t i = 0; i < found.size(); ++i)
            EXPECT_NEAR(found[i] - bearing, row.expected[i], 1) << row.text;
    }
}

TEST(Text, wordsAndNotes) {
    const Normalized result = normalizedPage(
        "<text id='t' x='5' y='20' font-family='No Such Font'> two\n <tspan>words &amp; \xe4\xb8\xad</tspan> "
        "</text>");
    EXPECT_TRUE(result.document.contains("<g id=\"t\" aria-label=\"two words &amp; \xe4\xb8\xad\">"))
        << result.document.toStdString();
    EXPECT_EQ(notesWith(result, "became the outlines of its letters"), 1);
    EXPECT_GE(notesWith(result, "the font \"No Such Font\" is not installed"), 1);
    EXPECT_EQ(
        notesWith(normalizedPage("<text y='20'>a\xf4\x8f\xbf\xbd</text>"), "no font has some of its letters"),
        1);
    EXPECT_EQ(
        notesWith(normalizedPage("<path id='p' d='M0 9H9'/><text><textPath href='#p'>long</textPath></text>"),
                  "letters beyond the end of the path"),
        1);
    // Of no letters nothing is left, and no group.
    EXPECT_FALSE(normalizedPage("<text id='t' y='20'> <tspan/> </text>").document.contains("\"t\""));
}

TEST(Text, hostileTextIsBounded) {
    const QByteArray big(60'000, '.');
    EXPECT_EQ(notesWith(normalizedPage("<text font-size='1' y='9'>" + big + "</text>"), "very long text"), 1);
    QByteArray uses = "<defs><text id='t' font-size='1' y='9'>" + QByteArray(45'000, '.') + "</text></defs>";
    for (int i = 0; i < 6; ++i) uses += "<use href='#t'/>";
    EXPECT_EQ(notesWith(normalizedPage(uses), "too many letters"), 1);
    QByteArray places = "<text rotate='1 2' textLength='1e300' x='";
    for (int i = 0; i < 20'000; ++i) places += "5 ";
    EXPECT_FALSE(normalizedPage(places + "'>" + QByteArray(20'000, '.') + "</text>").refused);
    for (const char* text :
         {"<text font-size='0' y='9'>a</text>", "<text font-size='1e300' y='9'>a</text>",
          "<text font-size='-3' y='9'>a</text>", "<text x='1e300' y='9'>a</text>",
          "<text id='t'><tref href='#t'/>a</text>", "<text><textPath href='#none'>a</textPath></text>",
          "<text letter-spacing='1e30' y='9'>aa</text>"}) {
        EXPECT_FALSE(normalizedPage(text).refused) << text;
    }
}

}  // namespace
}  // namespace tznormalize
