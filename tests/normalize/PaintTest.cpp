// Paints and effects: each drawing looks the same normalized, after the round trip of that, and is the same
// text normalized twice.
#include <gtest/gtest.h>

#include "normalize/Normalize.h"
#include "tests/normalize/Likeness.h"

namespace tznormalize {
namespace {

struct Row {
    const char* name;
    const char* definition;
    const char* content;  // what uses it
};

void expectAlike(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        const QByteArray page = QByteArray("<defs>") + row.definition + "</defs>" + row.content;
        EXPECT_EQ(whatDiffersInPage(page).toStdString(), "") << row.name;
    }
}

std::string normalized(const QByteArray& content) {
    return normalize(
               "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
               "width='100' height='100'>" +
                   content + "</svg>",
               QString())
        .document.toStdString();
}

#define STOPS "<stop stop-color='red'/><stop offset='1' stop-color='blue'/>"
#define RECT "<rect x='10' y='20' width='80' height='60' fill='url(#p)'/>"

TEST(Paint, gradients) {
    expectAlike({
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
    expectAlike({
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

#define CLIPPED "<g clip-path='url(#p)'><rect width='100' height='100' fill='red'/></g>"

TEST(Paint, clipPaths) {
    expectAlike({
        {"in user space, a transform, even-odd, use",
         "<circle id='u' cx='80' cy='80' r='15'/><clipPath id='p' transform='rotate(5)'><path d='M20 "
         "20h50v50h-50zm10 "
         "10v30h30v-30z' clip-rule='evenodd'/><use xlink:href='#u'/></clipPath>",
         "<g transform='translate(5)'>" CLIPPED "</g>"},
        {"in the box",
         "<clipPath id='p' clipPathUnits='objectBoundingBox'><circle cx='.5' cy='.5' r='.5'/></clipPath>",
         "<rect x='10' y='20' width='80' height='60' clip-path='url(#p)'/>"},
        {"clipped itself, and in it",
         "<clipPath id='d'><path d='M0 0H60V99H0Z'/></clipPath><clipPath id='p' clip-path='url(#d)'><circle "
         "cx='50' "
         "cy='50' r='40'/></clipPath><clipPath id='q'><circle cx='80' cy='80' r='20' "
         "clip-path='url(#r)'/></clipPath>"
         "<clipPath id='r'><rect x='80' width='20' height='99'/></clipPath>",
         CLIPPED "<rect x='60' y='60' width='40' height='40' clip-path='url(#q)'/>"},
        {"of nothing, of itself, of no clip path",
         "<clipPath id='p'/><clipPath id='s' clip-path='url(#s)'><circle cx='50' cy='50' r='40'/></clipPath>",
         CLIPPED "<circle cx='20' cy='20' r='9' clip-path='url(#none)'/>"},
        {"below the page", "<clipPath id='p'><rect x='30' y='10' width='40' height='500'/></clipPath>",
         CLIPPED},
    });
}

#define MASKED "<rect x='10' y='20' width='80' height='60' fill='red' mask='url(#p)'/>"

TEST(Paint, masks) {
    expectAlike({
        {"by light",
         "<linearGradient id='g'><stop/><stop offset='1' stop-color='#fff'/></linearGradient>"
         "<mask id='p'><rect width='100' height='100' fill='url(#g)'/></mask>",
         MASKED},
        {"by alpha", "<mask id='p' style='mask-type:alpha'><circle cx='50' cy='50' r='30'/></mask>", MASKED},
        {"content in the box",
         "<mask id='p' maskContentUnits='objectBoundingBox'><circle cx='.5' cy='.5' r='.4' "
         "fill='#fff' fill-opacity='.7'/></mask>",
         MASKED},
        {"a region, groups in it, a scale",
         "<mask id='p' maskUnits='userSpaceOnUse' x='30' y='30' width='40' height='45'><g "
         "opacity='.8'><circle cx='60' "
         "cy='50' r='30' fill='#fff'/><circle cx='30' cy='50' r='30' fill='#fff'/></g></mask>",
         "<g transform='translate(5) scale(1.1)'>" MASKED "</g>"},
        {"masked itself, below the page",
         "<mask id='n'><rect width='50' height='200' fill='#fff'/></mask><mask id='p' mask='url(#n)'><rect "
         "x='20' "
         "width='50' height='500' fill='#fff'/></mask>",
         MASKED},
    });
}

#define FILTERED "<rect x='25' y='30' width='50' height='40' fill='orange' filter='url(#p)'/>"

TEST(Paint, filters) {
    expectAlike({
        {"a blur, scaled",
         "<filter id='p' x='-.5' y='-.5' width='2' height='2'><feGaussianBlur stdDeviation='4 "
         "1'/></filter>",
         "<g transform='scale(1.2)'>" FILTERED "</g>"},
        {"a shadow",
         "<filter id='p'><feOffset dx='6' dy='6' in='SourceAlpha' result='o'/><feGaussianBlur "
         "stdDeviation='3' in='o' result='b'/><feMerge><feMergeNode in='b'/><feMergeNode in='SourceGraphic'/>"
         "</feMerge></filter>",
         "<g transform='translate(9 9)'>" FILTERED "</g>"},
        {"units of the box",
         "<filter id='p' primitiveUnits='objectBoundingBox'><feGaussianBlur stdDeviation='.05 "
         ".1'/></filter>",
         FILTERED},
        {"colours",
         "<filter id='p' color-interpolation-filters='sRGB'><feColorMatrix type='saturate' "
         "values='0'/></filter>",
         "<g filter='url(#p)'><circle cx='30' cy='50' r='20' fill='lime'/></g>"},
        {"a part of the region, flooded",
         "<filter id='p'><feFlood x='50' y='20' width='40' height='50' flood-color='teal' flood-opacity='.5' "
         "result='a'/><feBlend in='SourceGraphic' in2='a' mode='multiply'/></filter>",
         FILTERED},
        {"light",
         "<filter id='p'><feGaussianBlur in='SourceAlpha' stdDeviation='3' result='b'/><feSpecularLighting "
         "in='b' surfaceScale='5' specularExponent='10' lighting-color='white' result='s'><fePointLight "
         "x='40' y='20' "
         "z='100'/></feSpecularLighting><feComposite in='s' in2='SourceAlpha' operator='in'/></filter>",
         FILTERED},
        {"with opacity and a clip path",
         "<clipPath id='c'><rect x='40' width='60' height='100'/></clipPath><filter id='p'><feGaussianBlur "
         "stdDeviation='4'/></filter>",
         "<g opacity='.6' clip-path='url(#c)'>" FILTERED "</g>"},
        {"of nothing, missing", "<filter id='p'/>",
         FILTERED "<circle cx='20' cy='20' r='9' filter='url(#none)'/><circle cx='80' cy='90' r='9'/>"},
    });
}

#define LINE "fill='none' stroke='#000' stroke-width='3' "
#define ALL "marker-start='url(#p)' marker-mid='url(#p)' marker-end='url(#p)'/>"
#define ARROW "<path d='M0 0L6 3L0 6z' fill='red'/></marker>"

TEST(Paint, markers) {
    expectAlike({
        {"at all vertices",
         "<marker id='p' markerWidth='6' markerHeight='6' refX='3' refY='3' orient='auto'>" ARROW,
         "<path d='M10 80L50 20L90 60' " LINE ALL},
        {"on curves and closed outlines",
         "<marker id='p' markerWidth='6' markerHeight='6' refX='3' refY='3' orient='auto'>" ARROW,
         "<path d='M10 30C30 0 50 60 70 30S90 50 95 20' " LINE ALL
         "<polygon points='10,50 90,60 50,90' marker-mid='url(#p)' " LINE "/>"},
        {"a view box, its own units, a fixed angle",
         "<marker id='p' viewBox='0 0 10 10' refX='1' refY='5' markerWidth='10' markerHeight='10' "
         "markerUnits='userSpaceOnUse' orient='30'><path d='M0 0L10 5L0 10z'/></marker>",
         "<g transform='rotate(10) scale(1.3)'><line x1='10' y1='10' x2='50' y2='40' opacity='.5' " LINE ALL
         "</g>"},
        {"mirrored and stretched",
         "<marker id='p' markerWidth='6' markerHeight='6' refX='3' refY='3' "
         "orient='auto'>" ARROW,
         "<g transform='translate(0 100) scale(.5 -1)'><path d='M20 20L160 60' " LINE ALL "</g>"},
        {"cut off, and not",
         "<marker id='p' markerWidth='3' markerHeight='3' orient='auto'>" ARROW
         "<marker id='q' markerWidth='3' markerHeight='3' overflow='visible'>" ARROW,
         "<path d='M10 20H50' " LINE ALL "<path d='M10 60H50' marker-end='url(#q)' " LINE "/>"},
        {"inherited, with opacity",
         "<marker id='p' markerWidth='4' markerHeight='4' refX='2' refY='2'><circle cx='2' "
         "cy='2' r='2' fill='red'/></marker>",
         "<g marker-end='url(#p)' opacity='.5' " LINE
         "><path d='M10 20H60'/><path d='M10 60H60L90 20'/><rect x='60' "
         "y='60' width='30' height='30'/></g>"},
        {"in the colours of its line",
         "<marker id='p' markerWidth='6' markerHeight='6' refX='3' refY='3'><circle "
         "cx='3' cy='3' r='2' fill='context-stroke' stroke='context-fill'/></marker>",
         "<path d='M20 20L80 70' fill='lime' stroke='blue' stroke-width='5' marker-end='url(#p)'/>"},
        {"in a pattern",
         "<marker id='m' markerWidth='6' markerHeight='6' refX='3' refY='3'><circle cx='3' cy='3' "
         "r='2'/></marker><pattern id='p' width='30' height='30' patternUnits='userSpaceOnUse'><path d='M5 "
         "5L20 20' "
         "stroke='red' marker-end='url(#m)'/></pattern>",
         RECT},
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
        EXPECT_NE(normalized(row.content).find(row.expected), std::string::npos) << row.content << '\n'
                                                                                 << normalized(row.content);
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
        const Normalized result =
            normalize(QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='99' height='99'>") +
                          row.content + "</svg>",
                      QString());
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
    EXPECT_NE(normalized(chain + "<rect width='9' height='9' fill='url(#g0)'/>"), "");
    QByteArray nested;
    for (int i = 0; i < 100; ++i) {
        const QByteArray next = QByteArray::number(i + 1);
        nested += "<pattern id='p" + QByteArray::number(i) +
                  "' width='9' height='9' patternUnits='userSpaceOnUse'>"
                  "<rect width='5' height='5' fill='url(#p" +
                  next + ")'/><rect width='4' height='4' stroke='url(#p" + next + ")'/></pattern>";
    }
    EXPECT_NE(normalized(nested + "<rect width='9' height='9' fill='url(#p0)'/>"), "");
    EXPECT_NE(normalized("<filter id='f' x='-1e30' y='-1e30' width='1e300' height='1e300'><feGaussianBlur "
                         "stdDeviation='1e30'/></filter><rect width='9' height='9' filter='url(#f)'/>"),
              "");
    QByteArray line = "<marker id='m'><path d='M0 0H3V3'/></marker><path marker-mid='url(#m)' d='M0 0";
    for (int i = 0; i < 50'000; ++i) line += "L9 9L0 5";
    EXPECT_NE(normalized(line + "'/>"), "");
}

}  // namespace
}  // namespace tznormalize
