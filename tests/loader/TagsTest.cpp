// The string tags of imported polygons: texts, and the order in which they are set.
#include "tests/common/Table.h"
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

TEST_F(Tags, table) {
    for (const auto& row : readTable("loader/tags.txt", 2)) {
        ASSERT_TRUE(imports("<svg>" + row[0] + "</svg>")) << row[0] << refusal_;
        EXPECT_EQ(tagList(0), row[1]) << row[0];
    }
}

// Every group in the chain has its place, names or not; the shape between two groups has the outer one's.
TEST_F(Tags, groupsOneAfterAnother) {
    ASSERT_TRUE(imports(
        "<svg><g id='a'><g><g id='b'><line/></g><line/></g></g><g><line/></g><g><g id='c'><line/></g></g>"
        "<line/></svg>"));
    EXPECT_EQ(tags("PGRP"), "3 2 4 6 -");
    EXPECT_EQ(tags("GSVG"), "a;;b a - ;c -");
}

TEST_F(Tags, primitives) {
    for (const auto& row : readTable("loader/primitives.txt", 2)) {
        ASSERT_TRUE(imports("<svg>" + row[0] + "</svg>")) << row[0] << refusal_;
        EXPECT_EQ(tags("PRIM"), row[1]) << row[0];
    }
}

// What stands on the element itself counts, whatever its group says.
TEST_F(Tags, nothingIsInherited) {
    expect({{"<g fill='red' style='stroke:blue' transform='scale(2)' opacity='.5'><line/></g>",
             "PRIM=LINE VCMP=1 PGRP=1 ZORD=0"}});
}

}  // namespace
}  // namespace tzhost
