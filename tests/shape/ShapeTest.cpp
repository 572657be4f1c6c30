// Shape items, element transforms and the extent of documents, from XML snippets.
#include <gtest/gtest.h>

#include "svg/shape/DocumentExtent.h"
#include "svg/shape/ElementTransform.h"
#include "svg/shape/ShapeItem.h"
#include "tests/common/Table.h"
#include "tests/tree/ParsedDocument.h"

namespace tzsvg {
namespace {

std::string rectText(const QRectF& r) {
    return QStringLiteral("%1 %2 %3 %4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height()).toStdString();
}

TEST(ShapeItem, boundsTellTheGeometry) {
    const LengthContext lengths;
    for (const auto& row : readTable("shape/bounds.txt", 2)) {
        const auto item = createShapeItem(ParsedDocument(row[0].c_str()).root(), lengths);
        EXPECT_EQ(item ? rectText(item->boundingRect()) : "none", row[1]) << row[0];
    }
    EXPECT_EQ(createShapeItem(ParsedDocument("<a/>").document.top(), lengths), nullptr)
        << "a document is no element";
}

// A path of one point keeps it, wherever it is.
TEST(ShapeItem, singlePoint) {
    const auto pointsOfPath = [](const char* xml) {
        return buildPathItem(ParsedDocument(xml).root())->path().elementCount();
    };
    EXPECT_EQ(pointsOfPath("<path d='M3 4'/>"), 1);
    EXPECT_EQ(pointsOfPath("<path d='M0 0'/>"), 1);
    EXPECT_EQ(buildPolylineItem(ParsedDocument("<polyline points='0,0'/>").root())->path().elementCount(), 1);
    EXPECT_EQ(pointsOfPath("<path d=''/>"), 0);
}

TEST(ElementTransform, ancestors) {
    const ParsedDocument parsed(
        "<svg transform='scale(10)'><g transform='translate(5 0)'><a><rect transform='scale(2)'/></a>"
        "<g transform=''><line/></g></g><g transform='bad'><g><path/></g></g></svg>");
    struct Row {
        const char* name;
        bool parses;
        QPointF mapped;  // of (1, 0)
    };
    const Row rows[] = {{"rect", true, {70, 0}}, {"line", true, {60, 0}}, {"path", false, {1, 0}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const XmlNode& node = parsed.named(row.name);
        QTransform transform(9, 9, 9, 9, 9, 9);
        EXPECT_EQ(accumulatedTransform(node, transform), row.parses);
        EXPECT_EQ(transform.map(QPointF(1, 0)), row.mapped);

        // What the walk knows of the ancestors gives the same.
        std::vector<const XmlNode*> ancestors;
        for (const XmlNode* n = node.parent(); n; n = n->parent()) ancestors.push_back(n);
        AncestorTransforms walked;
        for (auto n = ancestors.rbegin(); n != ancestors.rend(); ++n) walked.push(**n);
        QTransform same(9, 9, 9, 9, 9, 9);
        EXPECT_EQ(walked.accumulated(node, same), row.parses);
        EXPECT_EQ(same, transform);
    }
}

// The lower corner comes first whatever the sizes' signs are.
TEST(DocumentExtent, boundsOfNegativeSizes) {
    for (const char* const xml : {"<rect x='10' y='20' width='-5' height='-6'/>",
                                  "<rect x='10' y='20' width='-5' height='-6' transform='translate(0 0)'/>",
                                  "<rect x='5' y='10' width='-2.5' height='-3' transform='scale(2)'/>"}) {
        ElementBounds bounds{};
        ASSERT_TRUE(elementBounds(ParsedDocument(xml).root(), LengthContext(), bounds)) << xml;
        EXPECT_EQ(bounds.minX, 5) << xml;
        EXPECT_EQ(bounds.maxX, 10) << xml;
        EXPECT_EQ(bounds.minY, 14) << xml;
        EXPECT_EQ(bounds.maxY, 20) << xml;
    }
}

// Those of the item, which a path is measured without.
TEST(DocumentExtent, boundsOfPaths) {
    for (const char* const xml :
         {"<path d=''/>", "<path d='M3 4'/>", "<path d='M0 0'/>", "<path d='M1 2M30 40'/>",
          "<path d='M1 2L5 6Q50 -9 7 7A3 4 30 1 0 9 9z'/>", "<path d='M1 2h0'/>",
          "<polyline points='1,2 3,-4'/>", "<polyline points='5,5'/>"}) {
        ElementBounds bounds{};
        const ParsedDocument parsed(xml);
        ASSERT_TRUE(elementBounds(parsed.root(), LengthContext(), bounds)) << xml;
        const QRectF expected = createShapeItem(parsed.root(), LengthContext())->boundingRect();
        EXPECT_EQ(QRectF(bounds.minX, bounds.minY, bounds.maxX - bounds.minX, bounds.maxY - bounds.minY),
                  expected)
            << xml;
    }
}

TEST(DocumentExtent, largestY) {
    for (const auto& row : readTable("shape/largest-y.txt", 2)) {
        bool ok = row[1] == "refused";
        const double largest = documentMaxY(ParsedDocument(row[0].c_str()).document.top(), {}, ok);
        EXPECT_EQ(ok ? QString::number(largest).toStdString() : "refused", row[1]) << row[0];
    }
}

}  // namespace
}  // namespace tzsvg
