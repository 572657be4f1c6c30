// Gradients and patterns: each drawing looks the same normalized, after the round trip of that, and is the
// same text normalized twice. And of all paints and effects, what is lost.
#include <gtest/gtest.h>

#include "normalize/Normalize.h"
#include "tests/normalize/Likeness.h"
#include "tests/normalize/Pages.h"

namespace tznormalize {
namespace {

#define STOPS "<stop stop-color='red'/><stop offset='1' stop-color='blue'/>"
#define RECT "<rect x='10' y='20' width='80' height='60' fill='url(#p)'/>"

TEST(Paint, gradients) {
    expectDefinedAlike({
        {"in the box", "<linearGradient id='p' x2='.8' y2='50%'>" STOPS "</linearGradient>", RECT},
        {"in user space, under a scale",
         "<linearGradient id='p' gradientUnits='userSpaceOnUse' x1='10%' y1='5' x2='30'>" STOPS
         "</linearGradient>",
         "<g transform='translate(9) scale(2 1.5)'><rect x='5' y='9' width='35' height='40' "
         "fill='url(#p)'/></g>"},
        {"a chain of references",
         "<linearGradient id='a'>" STOPS "</linearGradient><linearGradient id='b' xlink:href='#a' "
         "gradientUnits='userSpaceOnUse' spreadMethod='reflect'/>"
         "<radialGradient id='p' xlink:href='#b' cx='40' cy='50' r='20'/>",
         RECT},
        {"a focus, a transform, repeated",
         "<radialGradient id='p' fx='.4' fy='.3' r='.3' spreadMethod='repeat' gradientTransform='rotate(10) "
         "scale(1 .7)'>" STOPS "</radialGradient>",
         "<circle cx='50' cy='45' r='30' fill='url(#p)'/>"},
        {"stops: style, currentColor, opacities, going back, one only",
         "<g color='teal'><linearGradient id='p'><stop offset='20%' style='stop-color:currentColor'/><stop "
         "offset='.1' "
         "stop-color='#f0f' stop-opacity='.3'/><stop offset='1' "
         "stop-color='rgba(0,0,0,.5)'/></linearGradient></g>"
         "<linearGradient id='one'><stop stop-color='green' stop-opacity='.5'/></linearGradient>",
         RECT "<rect width='90' height='15' fill='url(#one)'/>"},
        {"no box: the fallback", "<linearGradient id='p'>" STOPS "</linearGradient>",
         "<g stroke-width='8'><path d='M10 50H90' stroke='url(#p)'/><path d='M10 20H90' stroke='url(#p) "
         "green'/>"
         "<path d='M20 70L80 90' stroke='url(#p)'/></g><circle cx='80' cy='40' r='9' fill='url(#none) "
         "orange'/>"},
        {"no stops", "<linearGradient id='p'/>", RECT "<circle cx='50' cy='50' r='9'/>"},
    });
}

TEST(Paint, patterns) {
    expectDefinedAlike({
        {"in user space",
         "<pattern id='p' width='20' height='10' patternUnits='userSpaceOnUse'><circle cx='5' "
         "cy='5' r='4' fill='red'/></pattern>",
         RECT},
        {"a tile elsewhere, turned",
         "<pattern id='p' x='7' y='3' width='20' height='10' patternUnits='userSpaceOnUse' "
         "patternTransform='rotate(20) "
         "scale(1.3)'><rect x='8' y='4' width='12' height='6' fill='red'/></pattern>",
         "<g transform='scale(1.2)'>" RECT "</g>"},
        {"tile and content in the box",
         "<pattern id='p' width='.25' height='.5' patternContentUnits='objectBoundingBox'><circle cx='.1' "
         "cy='.2' "
         "r='.1' fill='red'/></pattern>",
         RECT},
        {"the tile in the box",
         "<pattern id='p' width='.25' height='.5'><circle cx='10' cy='10' r='8' "
         "fill='red'/></pattern>",
         RECT},
        {"a view box",
         "<pattern id='p' width='20' height='20' viewBox='0 0 10 10' patternUnits='userSpaceOnUse'><rect "
         "width='5' "
         "height='10' fill='red'/><rect x='5' width='5' height='5' fill='blue'/></pattern>",
         RECT},
        {"patterns in patterns",
         "<pattern id='q' width='4' height='4' patternUnits='userSpaceOnUse'><rect width='2' height='2' "
         "fill='blue'/></pattern><pattern id='p' width='40' height='30' patternUnits='userSpaceOnUse'><rect "
         "width='30' height='20' fill='url(#q)' stroke='red'/></pattern>",
         RECT},
        {"a pattern in itself",
         "<pattern id='p' width='40' height='30' patternUnits='userSpaceOnUse'><rect width='30' height='20' "
         "fill='url(#p)' stroke='red'/></pattern>",
         RECT},
        {"a chain",
         "<pattern id='q' width='20' height='20' patternUnits='userSpaceOnUse'><rect width='10' height='10' "
         "fill='blue'/></pattern><pattern id='p' xlink:href='#q' patternTransform='rotate(45)'/>",
         RECT},
        {"groups in it, below the page",
         "<pattern id='p' width='80' height='300' patternUnits='userSpaceOnUse' y='-150'><g "
         "opacity='.5'><rect "
         "y='180' width='50' height='50' fill='red'/><rect x='20' y='200' width='50' "
         "height='80'/></g></pattern>",
         RECT},
        {"on a stroke",
         "<pattern id='p' width='8' height='8' patternUnits='userSpaceOnUse'><rect width='4' "
         "height='8' fill='red'/></pattern>",
         "<circle cx='50' cy='50' r='30' fill='none' stroke='url(#p)' stroke-width='20'/>"},
    });
}

// What librsvg draws otherwise than the standard says.
TEST(Paint, valuesWritten) {
    const struct {
        const char* content;
        const char* expected;
    } rows[] = {
        {"<linearGradient id='a' href='#b'>" STOPS "</linearGradient><linearGradient id='b' href='#a'/><rect "
         "width='9' height='9' fill='url(#b)'/>",
         "fill=\"url(#b)\""},
        {"<linearGradient id='a' x1='1'>" STOPS
         "</linearGradient><rect width='9' height='9' fill='url(#a)'/>",
         "fill=\"#0000ff\""},
        {"<radialGradient id='a' r='0'>" STOPS "</radialGradient><rect width='9' height='9' fill='url(#a)'/>",
         "fill=\"#0000ff\""},
        // Equal references share one definition, which keeps the name.
        {"<linearGradient id='a' gradientUnits='userSpaceOnUse'>" STOPS
         "</linearGradient><g fill='url(#a)'><rect "
         "width='9' height='9'/><rect x='9' width='9' height='9'/></g>",
         "</linearGradient></defs>"},
    };
    for (const auto& row : rows) {
        const QByteArray document = normalizedPage(row.content).document;
        EXPECT_TRUE(document.contains(row.expected)) << row.content << '\n' << document.toStdString();
    }
}

TEST(Paint, whatIsLostIsNoted) {
    const struct {
        const char* content;
        const char* note;  // element, code, start of the text
    } rows[] = {
        {"<filter id='f'><feTurbulence baseFrequency='.1'/></filter><rect width='9' height='9' "
         "filter='url(#f)'/>",
         "feTurbulence approximated its noise"},
        {"<filter id='f'><feImage href='#r'/></filter><rect id='r' width='9' height='9' filter='url(#f)'/>",
         "feImage left-out the drawn element"},
        {"<rect width='9' height='9' filter='blur(3px)'/>", "rect left-out a filter that is no reference"},
        {"<rect width='9' height='9' clip-path='circle()'/>",
         "rect left-out a clip path that is no reference"},
        {"<marker id='m'><path d='M0 0H3V3'/></marker><path id='l' d='M0 0L9 9' marker-end='url(#m)'/>",
         "path carried its markers"},
        {"<mask id='m' width='2'/><g transform='rotate(20)'><rect width='9' height='9' mask='url(#m)'/></g>",
         "mask approximated its region"},
    };
    for (const auto& row : rows) {
        const Normalized result = normalizedPage(row.content);
        int found = 0;
        for (const Note& note : result.notes.list()) {
            const QString text =
                note.element + u' ' + QLatin1String(noteCodeText(note.code)) + u' ' + note.text;
            found += text.startsWith(QLatin1String(row.note));
        }
        EXPECT_EQ(found, 1) << row.note << '\n' << result.document.toStdString();
    }
}

TEST(Paint, hostileReferencesAreBounded) {
    QByteArray chain;
    for (int i = 0; i < 5000; ++i)
        chain += "<linearGradient id='g" + QByteArray::number(i) + "' href='#g" + QByteArray::number(i + 1) +
                 "'/>";
    EXPECT_FALSE(normalizedPage(chain + "<rect width='9' height='9' fill='url(#g0)'/>").refused);
    QByteArray nested;
    for (int i = 0; i < 100; ++i) {
        const QByteArray next = QByteArray::number(i + 1);
        nested += "<pattern id='p" + QByteArray::number(i) +
                  "' width='9' height='9' patternUnits='userSpaceOnUse'>"
                  "<rect width='5' height='5' fill='url(#p" +
                  next + ")'/><rect width='4' height='4' stroke='url(#p" + next + ")'/></pattern>";
    }
    EXPECT_FALSE(normalizedPage(nested + "<rect width='9' height='9' fill='url(#p0)'/>").refused);
    EXPECT_FALSE(
        normalizedPage("<filter id='f' x='-1e30' y='-1e30' width='1e300' height='1e300'><feGaussianBlur "
                       "stdDeviation='1e30'/></filter><rect width='9' height='9' filter='url(#f)'/>")
            .refused);
    QByteArray line = "<marker id='m'><path d='M0 0H3V3'/></marker><path marker-mid='url(#m)' d='M0 0";
    for (int i = 0; i < 50'000; ++i) line += "L9 9L0 5";
    EXPECT_FALSE(normalizedPage(line + "'/>").refused);
}

}  // namespace
}  // namespace tznormalize
