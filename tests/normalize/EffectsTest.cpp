// Clip paths, masks, filters and markers: each drawing looks the same normalized, after the round trip of
// that, and is the same text normalized twice.
#include <gtest/gtest.h>

#include "tests/normalize/Likeness.h"

namespace tznormalize {
namespace {

#define RECT "<rect x='10' y='20' width='80' height='60' fill='url(#p)'/>"
#define CLIPPED "<g clip-path='url(#p)'><rect width='100' height='100' fill='red'/></g>"

TEST(Paint, clipPaths) {
    expectDefinedAlike({
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
    expectDefinedAlike({
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
    expectDefinedAlike({
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
    expectDefinedAlike({
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

}  // namespace
}  // namespace tznormalize
