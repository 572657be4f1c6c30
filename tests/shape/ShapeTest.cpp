// Shape items, element transforms and the extent of documents, from XML snippets.
#include <gtest/gtest.h>

#include "svg/shape/DocumentExtent.h"
#include "svg/shape/ElementTransform.h"
#include "svg/shape/ShapeItem.h"
#include "tests/tree/ParsedDocument.h"

namespace tzsvg {
namespace {

std::string rectText(const QRectF& r) {
    return QStringLiteral("%1 %2 %3 %4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height()).toStdString();
}

TEST(ShapeItem, boundsTellTheGeometry) {
    struct Row {
        const char* xml;
        const char* bounds;  // null: no item
    };
    const Row rows[] = {
        // ellipse
        {"<circle cx='10' cy='20' r='5'/>", "5 15 10 10"},
        {"<circle cx='10' cy='20' r='5' rx='2'/>", "8 15 4 10"},
        {"<ellipse rx='4' ry='2'/>", "-4 -2 8 4"},
        {"<ellipse r='3' ry='1'/>", "-3 -1 6 2"},
        {"<circle/>", "0 0 0 0"},
        {"<circle r='-5'/>", "5 5 -10 -10"},
        // the others
        {"<line x1='1' y1='2' x2='5' y2='9'/>", "1 2 4 7"},
        {"<rect x='1' y='2' width='3' height='4'/>", "1 2 3 4"},
        {"<rect/>", "0 0 0 0"},
        {"<rect x='10%' y='10%' width='1in' height='1mm'/>", "0.1 0.1 0.0254 0.001"},
        {"<polygon points='0,0 4,0 4,3'/>", "0 0 4 3"},
        {"<polygon points='2,3'/>", "2 3 0 0"},
        {"<polygon points=''/>", nullptr},
        {"<polygon/>", nullptr},
        {"<polygon points='0 0 4 0'/>", nullptr},
        {"<polyline points='0,0 4,0 4,3'/>", "0 0 4 3"},
        {"<polyline points='2,3'/>", "2 3 0 0"},
        {"<polyline points=''/>", "0 0 0 0"},
        {"<polyline/>", nullptr},
        {"<polyline points='1,1 2'/>", nullptr},
        {"<polyline points='1,1 1e128,2'/>", nullptr},
        {"<path d='M1 2 L5 6'/>", "1 2 4 4"},
        {"<path d='M0 0 C0 20 10 20 10 0'/>", "0 0 10 20"},  // control points count
        {"<path d='M0 0 L1 1 M5 5'/>", "0 0 5 5"},           // a trailing move counts
        {"<path d='M3 4'/>", "3 4 0 0"},
        {"<path d=''/>", "0 0 0 0"},
        {"<path/>", nullptr},
        {"<path d='M0'/>", nullptr},
        // nameCase: builders do not mind it
        {"<RECT width='3' height='4'/>", "0 0 3 4"},
        {"<Circle r='1'/>", "-1 -1 2 2"},
        {"<text/>", nullptr},
        {"<g/>", nullptr},
    };
    const LengthContext lengths;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.xml);
        const auto item = createShapeItem(ParsedDocument(row.xml).root(), lengths);
        ASSERT_EQ(item != nullptr, row.bounds != nullptr);
        if (item) {
            EXPECT_EQ(rectText(item->boundingRect()), row.bounds);
        }
    }
    EXPECT_EQ(createShapeItem(ParsedDocument("<a/>").document.top(), lengths), nullptr)
        << "a document is no element";
}

TEST(ShapeItem, roundedRect) {
    const LengthContext lengths;
    const auto radii = [&](const char* xml) {
        const auto item = buildRectItem(ParsedDocument(xml).root(), lengths);
        const auto* const rounded = dynamic_cast<QGraphicsItemRoundedRect*>(item.get());
        return rounded ? QPointF(rounded->rx(), rounded->ry()) : QPointF(-1, -1);
    };
    EXPECT_EQ(radii("<rect rx='3'/>"), QPointF(3, 0));
    EXPECT_EQ(radii("<rect ry='3' width='1'/>"), QPointF(0, 3));
    EXPECT_EQ(radii("<rect rx='x'/>"), QPointF(0, 0));
    EXPECT_EQ(radii("<rect width='9'/>"), QPointF(-1, -1));
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

TEST(ShapeItem, nameCase) {
    for (const char* const name : {"circle", "ellipse", "line", "path", "polygon", "polyline", "rect"}) {
        const QString xml = QStringLiteral("<%1/>").arg(QLatin1String(name));
        EXPECT_TRUE(ParsedDocument(xml).root().isShape()) << name;
        EXPECT_FALSE(ParsedDocument(xml.toUpper()).root().isShape()) << name;
    }
    const ParsedDocument other("<?rect?><g>rect</g>");
    for (const XmlNode* node = &other.document.top(); node; node = node->nextBelow(other.document.top())) {
        EXPECT_FALSE(node->isShape()) << node->name().toStdString();
    }
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
    struct Row {
        const char* xml;
        bool ok;
        double largest;
    };
    const Row rows[] = {
        {"<svg/>", true, 0},
        {"<svg><rect y='-50' height='10'/></svg>", true, 0},
        {"<svg><rect height='10'/><g><circle cy='5' r='30'/></g></svg>", true, 35},
        {"<svg><rect y='10' height='-5'/></svg>", true, 10},
        {"<svg><defs><rect height='70'/></defs><clipPath><rect height='80'/></clipPath></svg>", true, 80},
        // Only the own transform counts.
        {"<svg><g transform='translate(0 100)'><rect height='10' transform='scale(3)'/></g></svg>", true, 30},
        {"<svg><g transform='bad'><rect height='10'/></g></svg>", true, 10},
        {"<svg><rect height='10' transform='rotate(-90)' width='40'/></svg>", true, 0},
        {"<svg><rect height='10' transform='rotate(90)' width='40'/></svg>", true, 40},
        {"<svg><RECT height='10'/></svg>", true, 0},
        {"<svg><rect height='10' transform='bad'/></svg>", false, 0},
        {"<svg><defs><path d='M'/></defs></svg>", false, 0},
    };
    const LengthContext lengths;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.xml);
        bool ok = !row.ok;
        const double largest = documentMaxY(ParsedDocument(row.xml).document.top(), lengths, ok);
        EXPECT_EQ(ok, row.ok);
        if (row.ok) {
            EXPECT_DOUBLE_EQ(largest, row.largest);
        }
    }
}

}  // namespace
}  // namespace tzsvg
