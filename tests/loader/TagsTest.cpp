// The string tags of imported polygons: texts, and the order in which they are set.
#include "tests/loader/LoaderFixture.h"

namespace tzhost {
namespace {

struct Row {
    const char* document;  // in a root element
    const char* tags;      // of the first polygon
};

class Tags : public LoaderTest {
  protected:
    template <size_t count>
    void expect(const Row (&rows)[count]) {
        for (const Row& row : rows) {
            ASSERT_TRUE(imports("<svg>" + std::string(row.document) + "</svg>")) << row.document << refusal_;
            ASSERT_GE(mesh().polygonCount(), 1U) << row.document;
            EXPECT_EQ(tagList(0), row.tags) << row.document;
        }
    }
};

TEST_F(Tags, order) {
    expect({
        {"<circle r='1'/>", "PRIM=CIRCLE{CX:0,CY:0,R:1} VCMP=1 ZORD=0"},
        {"<g id='a'><g id='b'><line transform='scale(2)' id='c' clip-path='url(#k)' stroke-miterlimit='4'"
         " stroke-linejoin='bevel' stroke-linecap='round' stroke-dashoffset='3' stroke-dasharray='1,2'"
         " stroke-opacity='.25' stroke='red' stroke-width='2px' style='x:y' opacity='0.5' fill-rule='evenodd'"
         " fill-opacity='75%' fill='url(#f)'/></g></g>",
         "FILL=url(#f) FILO=75% FILR=evenodd OPAC=0.5 STYL=x:y LWID=2px LCOL=red LALF=.25 DARR=1,2 DOFF=3 "
         "LCAP=round LJON=bevel MLIM=4 CPAT=url(#k) PRIM=LINE VCMP=1 PGRP=2 VGRP=b GSVG=a;b PICK=a;b ELID=c "
         "TRAN=scale(2) ZORD=0"},
    });
    // Every polygon of a path has them.
    ASSERT_TRUE(
        imports("<svg><g><path id='p' transform='scale(2)' fill='red' d='M0 0L1 1M2 2L3 3M4 4'/></g></svg>"));
    for (uint32_t i = 0; i < 3; ++i) {
        const char* const subPath[] = {"start{1}", "{1}", "end{1}"};
        EXPECT_EQ(tagList(i), "FILL=red PRIM=PATH VCMP=1 PGRP=1 ELID=p TRAN=scale(2) SPAT=" +
                                  std::string(subPath[i]) + " ZORD=0");
    }
}

TEST_F(Tags, style) {
    const std::string tail = " PRIM=LINE VCMP=1 ZORD=0";
    const Row rows[] = {
        {"style='fill:#00ff00' fill='red'", "FILL=#00ff00 STYL=fill:#00ff00"},
        {"style='stroke-width:2; stroke:blue' stroke='green'",
         "STYL=stroke-width:2; stroke:blue LWID=2 LCOL=green"},
        {"style='fill:  red  ;opacity:0.5'", "FILL=red   OPAC=0.5 STYL=fill:  red  ;opacity:0.5"},
        {"style='Fill:Red;STROKE-Width:1'", "FILL=Red STYL=Fill:Red;STROKE-Width:1 LWID=1"},
        {"style='' fill='red'", "FILL=red"},
        {"style='fill:;stroke: ;' fill='red' stroke=''", "FILL=red STYL=fill:;stroke: ;"},
        {"style='my-stroke:1;stroke:2;stroke:3'", "STYL=my-stroke:1;stroke:2;stroke:3 LCOL=2"},
        {"style='stroke :red' stroke='blue'", "STYL=stroke :red LCOL=blue"},
        {"style='stroke-opacity:.5;fill-opacity:.2'",
         "FILO=.2 STYL=stroke-opacity:.5;fill-opacity:.2 LALF=.5"},
        {"style=' fill:red' fill=' b '", "FILL= b  STYL= fill:red"},
        {"style='clip-path:url(a;b)'", "STYL=clip-path:url(a;b) CPAT=url(a"},
        {"fill='' stroke='' id='' transform=''", ""},
    };
    for (const Row& row : rows) {
        ASSERT_TRUE(imports("<svg><line " + std::string(row.document) + "/></svg>"))
            << row.document << refusal_;
        EXPECT_EQ(tagList(0), (row.tags[0] ? row.tags + tail : tail.substr(1))) << row.document;
    }
}

TEST_F(Tags, primitives) {
    const struct {
        const char* document;
        const char* text;
    } rows[] = {
        {"<rect x='10' y='20' width='30' height='40'/>", "RECT{X:10,Y:20,HEIGHT:40,WIDTH:30}"},
        {"<rect x='10' y='-20' width='30' height='40' rx='3'/>",
         "RECT{X:10,Y:-20,HEIGHT:40,WIDTH:30,RX:3,RY:0}"},
        {"<rect x='0.1' width='1234567' height='.00001' ry='1'/>",
         "RECT{X:0.1,Y:0,HEIGHT:1e-05,WIDTH:1.23457e+06,RX:0,RY:1}"},
        {"<circle cx='5' cy='5' r='2'/>", "CIRCLE{CX:5,CY:5,R:2}"},
        {"<circle cx='.1' r='2' rx='3' ry='4'/>", "CIRCLE{CX:0.1,CY:0,R:3}"},
        {"<ellipse cx='2' cy='1' rx='2' ry='1'/>", "ELLIPSE{CX:2,CY:1,RX:2,RY:1}"},
        {"<ellipse r='2' ry='1'/>", "ELLIPSE{CX:0,CY:0,RX:2,RY:1}"},
        {"<line/>", "LINE"},
        {"<polygon points='1,1'/>", "POLYGON"},
        {"<polyline points='1,1'/>", "POLYLINE"},
        {"<path d='M1 1'/>", "PATH"},
        // Units: metres, or as they are.
        {"<rect x='2in' y='10px' width=' 5mm ' height='1cm' rx='72pt' ry='1em'/>",
         "RECT{X:0.0508,Y:10,HEIGHT:0.01,WIDTH:0.005,RX:0.0254,RY:1}"},
        {"<rect x='1pc' y='2ex' width='1e2' height='3PX' rx='+1' ry='50%'/>",
         "RECT{X:0.00423333,Y:2,HEIGHT:0,WIDTH:100,RX:1,RY:0.5}"},
    };
    for (const auto& row : rows) {
        ASSERT_TRUE(imports("<svg>" + std::string(row.document) + "</svg>")) << row.document << refusal_;
        EXPECT_EQ(tags("PRIM"), row.text) << row.document;
    }
}

TEST_F(Tags, groups) {
    const std::string before = "PRIM=LINE VCMP=1 ";
    const Row rows[] = {
        {"<line/>", ""},
        {"<g><line/></g>", "PGRP=1 "},
        {"<g id='a'><line/></g>", "PGRP=1 VGRP=a GSVG=a PICK=a "},
        {"<g id='a'><a><line/></a></g>", ""},
        {"<g><g id='b'><line/></g></g>", "PGRP=2 VGRP=b GSVG=;b PICK=;b "},
        {"<g id='a'><g><line/></g></g>", "PGRP=2 GSVG=a PICK=a "},
        {"<g><g id='b'><g><line/></g></g></g>", "PGRP=3 GSVG=;b PICK=;b "},
        {"<defs><g/></defs><g/><g id='c'><line/></g>", "PGRP=3 VGRP=c GSVG=c PICK=c "},
        {"<g id='a'><switch><g id='b'><switch><line/></switch></g></switch></g>",
         "PGRP=2 VGRP=b GSVG=a;b PICK=a;b "},
        // Text of any language, and what stands for markup.
        {"<g id='\xC3\xA9 \xE6\x97\xA5'><line/></g>",
         "PGRP=1 VGRP=\xC3\xA9 \xE6\x97\xA5 GSVG=\xC3\xA9 \xE6\x97\xA5 PICK=\xC3\xA9 \xE6\x97\xA5 "},
        {"<g id='a&amp;&lt;&#x1F600;'><line/></g>",
         "PGRP=1 VGRP=a&<\xF0\x9F\x98\x80 GSVG=a&<\xF0\x9F\x98\x80 PICK=a&<\xF0\x9F\x98\x80 "},
    };
    for (const Row& row : rows) {
        ASSERT_TRUE(imports("<svg>" + std::string(row.document) + "</svg>")) << row.document << refusal_;
        EXPECT_EQ(tagList(0), before + row.tags + "ZORD=0") << row.document;
    }
}

// What stands on the element itself counts, whatever its group says.
TEST_F(Tags, nothingIsInherited) {
    expect({{"<g fill='red' style='stroke:blue' transform='scale(2)' opacity='.5'><line/></g>",
             "PRIM=LINE VCMP=1 PGRP=1 ZORD=0"}});
}

}  // namespace
}  // namespace tzhost
