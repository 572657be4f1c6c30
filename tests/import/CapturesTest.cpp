// What the import keeps as text: captures, group records and tags' texts, from whole documents.
#include <gtest/gtest.h>

#include <QGraphicsEllipseItem>
#include <cstring>
#include <random>

#include "import/Captures.h"
#include "import/PrimitiveText.h"
#include "import/Recognition.h"
#include "svg/shape/ShapeItem.h"
#include "svg/tree/SavedForm.h"
#include "tests/tree/ParsedDocument.h"

namespace tzsvg {
namespace {

// A document with what the captures read from it. Attributes stand in hash order: cases use one
// attribute where the text is compared whole.
struct Parsed : ParsedDocument {
    explicit Parsed(const char* xml) : ParsedDocument(xml), survey(document.top()) {}
    DocumentSurvey survey;
};

std::string text(const QString& string) {
    return string.toStdString();
}

TEST(Definitions, whatGoesIn) {
    struct Row {
        const char* xml;
        const char* definitions;
        const char* clipPaths;
    };
    const Row rows[] = {
        {"<svg/>", "", ""},
        {"<svg><defs/></svg>", "", ""},
        {"<svg><defs>\n <a/>\n <b>x</b></defs></svg>", "<a/><b>x</b>", ""},
        // First the children of every "defs", then patterns, linear and radial gradients outside.
        {"<svg><radialGradient/><linearGradient/><pattern/><defs><c/></defs><defs><pattern><d/></pattern></"
         "defs></svg>",
         "<c/><pattern><d/></pattern><pattern/><linearGradient/><radialGradient/>", ""},
        // A clip path inside "defs" is kept twice, on purpose.
        {"<svg><defs><clipPath id='a'/></defs><clipPath id='b'/></svg>", "<clipPath id=\"a\"/>",
         "<clipPath id=\"a\"/><clipPath id=\"b\"/>"},
        // Line breaks and tabs go, also as references.
        {"<svg><defs><a b='1&#xA;2&#x9;3&#13;4'>x&#10;y&#9;z</a></defs></svg>", "<a b=\"1234\">xyz</a>", ""},
        // A text of "defs" itself keeps its quotes, as one further down does.
        {"<svg><defs>say \"hi\" &amp; go<a>\"x\"</a></defs></svg>", "say \"hi\" &amp; go<a>\"x\"</a>", ""},
        {"<svg><defs><![CDATA[<&]]><!--c--><q:r xmlns:q='u' q:s='\xc3\xa9'/></defs></svg>", nullptr, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.xml);
        const Parsed parsed(row.xml);
        const std::string definitions = text(captureDefinitions(parsed.survey, 1 << 20));
        if (row.definitions) {
            EXPECT_EQ(definitions, row.definitions);
        } else {
            for (const char* const part :
                 {"<![CDATA[<&]]>", "<!--c-->", "q:s=\"\xc3\xa9\"", "xmlns:q=\"u\""}) {
                EXPECT_NE(definitions.find(part), std::string::npos) << part;
            }
        }
        EXPECT_EQ(text(captureClipPaths(parsed.survey, 1 << 20)), row.clipPaths);
    }
    EXPECT_EQ(text(withoutLineBreaks(QStringLiteral("a\n\t\rb&#xa;&#xA;&#xd;&#xD;&#x9;c&#x0A;&#XA;&#10;"))),
              "abc&#x0A;&#XA;&#10;");
}

TEST(Groups, records) {
    struct Row {
        const char* xml;
        bool captured;
        const char* records;
    };
    const Row rows[] = {
        {"<svg/>", true, ""},
        {"<svg><g/></svg>", true, "g=id{1}parent{root};"},
        {"<svg><g id='a'><g/></g><g/></svg>", true,
         "g=id{1}parent{root}attributes{id=\"a\"};g=id{2}parent{1};g=id{3}parent{root};"},
        {"<svg><g transform='scale(2)'/></svg>", true, "g=id{1}parent{root}attributes{};"},
        {"<svg><g style='a};g=&quot;&lt;'/></svg>", true,
         "g=id{1}parent{root}attributes{style=\"a};g=&quot;&lt;\"};"},
        {"<svg><switch><switch><g/></switch></switch></svg>", true, "g=id{1}parent{root};"},
        // Numbered without a record, and a parent all the same.
        {"<svg><defs><g><g/></g></defs><clipPath><g/></clipPath><pattern><g/></pattern><g/></svg>", true,
         "g=id{2}parent{1};g=id{5}parent{root};"},
        {"<svg><a><g/></a></svg>", false, nullptr},
        {"<svg><g/><switch><a><g/></a></switch></svg>", false, nullptr},
        {"<g><svg/></g>", false, nullptr},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.xml);
        const Parsed parsed(row.xml);
        GroupTable table;
        QString records;
        EXPECT_EQ(captureGroups(parsed.survey, table, records), row.captured);
        if (row.records) {
            EXPECT_EQ(text(records), row.records);
        }
    }
}

TEST(GroupTags, unnamedGroups) {
    const Parsed parsed(
        "<svg><g id='a'><g><g id='b'><i1/></g><i2/></g></g><g><i3/></g><g><g id='c'><i4/></g></g>"
        "<g id='d'><a><g id='e'><i5/></g></a></g><i6/></svg>");
    // Out of the document's order too: what was asked before must not show.
    GroupTable table;
    for (const XmlNode* const group : parsed.survey.groups) table.record(*group);
    struct Row {
        const char* shape;
        const char *number, *name, *chain;
    };
    const Row rows[] = {
        {"i1", "3", "b", "a;;b"}, {"i2", "2", "", "a"},  {"i3", "4", "", ""},
        {"i4", "6", "c", ";c"},   {"i5", "8", "e", "e"}, {"i1", "3", "b", "a;;b"},
        {"i2", "2", "", "a"},     {"i5", "8", "e", "e"}, {"i2", "2", "", "a"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.shape);
        const GroupTexts* const texts = table.textsOf(*parsed.named(row.shape).parent());
        ASSERT_NE(texts, nullptr);
        EXPECT_EQ(texts->number, row.number);
        EXPECT_EQ(texts->name, row.name);
        EXPECT_EQ(texts->chain, row.chain);
    }
    EXPECT_EQ(table.textsOf(parsed.root()), nullptr) << "the root is no group";
}

TEST(Doctype, text) {
    struct Row {
        const char* xml;
        const char* doctype;
    };
    const Row rows[] = {
        {"<svg/>", ""},
        {"<!DOCTYPE svg><svg/>", "<!DOCTYPE svg>\n"},
        {"<!DOCTYPE svg PUBLIC \"p\" \"s\"><svg/>", "<!DOCTYPE svg PUBLIC \"p\" \"s\">\n"},
        {"<!DOCTYPE svg PUBLIC \"p\" \"\"><svg/>", "<!DOCTYPE svg PUBLIC \"p\" \"\">\n"},
        {"<!DOCTYPE svg SYSTEM \"s\"><svg/>", "<!DOCTYPE svg SYSTEM \"s\">\n"},
        {"<!DOCTYPE svg [<!ENTITY a \"internal\">]><svg/>", "<!DOCTYPE svg>\n"},
        {"<!DOCTYPE svg [<!NOTATION b SYSTEM \"u\"><!NOTATION a PUBLIC \"v\">]><svg/>",
         "<!DOCTYPE svg [\n<!NOTATION a PUBLIC 'v'>\n<!NOTATION b SYSTEM 'u'>\n]>\n"},
        {"<!DOCTYPE svg [<!ENTITY e SYSTEM \"u\">]><svg/>", "<!DOCTYPE svg [\n<!ENTITY e SYSTEM 'u'>\n]>\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.xml);
        EXPECT_EQ(text(captureDoctype(Parsed(row.xml).document)), row.doctype);
    }

    const std::string fromIllustrator =
        text(captureDoctype(Parsed("<!-- Generator: Adobe Illustrator 10 --><!DOCTYPE svg><svg/>").document));
    EXPECT_EQ(fromIllustrator.find(
                  "<!DOCTYPE svg [\n<!ENTITY ns_extend \"http://ns.adobe.com/Extensibility/1.0/\">\n"
                  "<!ENTITY ns_ai \"http://ns.adobe.com/AdobeIllustrator/10.0/\">\n"),
              0U);
    EXPECT_NE(fromIllustrator.find("<!ENTITY ns_adobe_xpath \"http://ns.adobe.com/XPath/1.0/\">\n]>\n"),
              std::string::npos);
    // Only a comment of the document itself, and in this letter case.
    for (const char* const other : {"<!DOCTYPE svg><svg><!-- Generator: Adobe Illustrator --></svg>",
                                    "<!-- generator: adobe illustrator --><!DOCTYPE svg><svg/>"}) {
        EXPECT_EQ(text(captureDoctype(Parsed(other).document)), "<!DOCTYPE svg>\n") << other;
    }
}

TEST(Root, withoutGeometryAndChildren) {
    const Parsed parsed("<svg x='1' y='2' width='3' height='4' viewBox='0 0 1 1' version='1.1'><g/></svg>");
    EXPECT_EQ(text(captureRoot(parsed.root()).trimmed()), "<svg version=\"1.1\"/>");
    EXPECT_TRUE(parsed.root().has(Attribute::kWidth)) << "the document keeps its own";
}

TEST(IllustratorData, unchanged) {
    const Parsed parsed(
        "<svg><i:pgf id='adobe_illustrator_pgf'>a\nb</i:pgf><i:pgf id='x'/><i:pgf/><g><i:pgf "
        "id='adobe_illustrator_pgf'/></g></svg>");
    EXPECT_EQ(text(captureIllustratorData(parsed.survey)),
              "<i:pgf id=\"adobe_illustrator_pgf\">a\nb</i:pgf>\n<i:pgf id=\"adobe_illustrator_pgf\"/>\n");
}

TEST(SwitchFlattening, everyAlternativeInOrder) {
    Parsed parsed(
        "<svg><a/><switch><b/><switch><c><switch><d/></switch></c></switch><e/></switch><f/><switch/></svg>");
    flattenSwitches(parsed.survey);
    QString flat;
    saveNode(flat, parsed.root());
    EXPECT_EQ(text(withoutLineBreaks(flat)), "<svg><a/><b/><c><d/></c><e/><f/></svg>");
    const auto line = [&](const char* name) { return parsed.named(name).line(); };
    EXPECT_EQ(line("a"), 1);
    EXPECT_EQ(line("b"), -1) << "a copy has no line";
    EXPECT_EQ(line("d"), -1);
}

TEST(PrimitiveTags, texts) {
    struct Row {
        const char* xml;
        const char* primitive;
    };
    const Row rows[] = {
        {"<rect x='10' y='20' width='30' height='40'/>", "RECT{X:10,Y:20,HEIGHT:40,WIDTH:30}"},
        {"<rect width='1' rx='.5'/>", "RECT{X:0,Y:0,HEIGHT:0,WIDTH:1,RX:0.5,RY:0}"},
        {"<circle cx='5' cy='5' r='2'/>", "CIRCLE{CX:5,CY:5,R:2}"},
        {"<circle r='2' ry='3'/>", "CIRCLE{CX:0,CY:0,R:2}"},
        {"<ellipse cx='2' cy='1' rx='2' ry='1'/>", "ELLIPSE{CX:2,CY:1,RX:2,RY:1}"},
        {"<line/>", "LINE"},
        {"<polyline points='1,1'/>", "POLYLINE"},
        {"<path d=''/>", "PATH"},
        // precision: single for rectangles, double for ellipses; six digits, ties upwards
        {"<rect x='123456.5' y='1e-7' width='16777217' height='1234567'/>",
         "RECT{X:123457,Y:1e-07,HEIGHT:1.23457e+06,WIDTH:1.67772e+07}"},
        {"<circle cx='0.1' cy='1e10' r='33.33333333'/>", "CIRCLE{CX:0.1,CY:1e+10,R:33.3333}"},
    };
    const LengthContext lengths;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.xml);
        const Parsed parsed(row.xml);
        EXPECT_EQ(primitiveText(parsed.root(), *createShapeItem(parsed.root(), lengths)), row.primitive);
    }
    QGraphicsEllipseItem ellipse;
    EXPECT_TRUE(primitiveText(Parsed("<rect/>").root(), ellipse).empty()) << "not the element's item";
}

TEST(PrimitiveTags, numbersAsStreamed) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const auto bits = random();
        double value = 0;
        static_assert(sizeof value == sizeof bits);
        std::memcpy(&value, &bits, sizeof value);
        if (i % 2 == 0) value = static_cast<double>(static_cast<int64_t>(bits) >> 40) / 1000.0;
        QString streamed;
        QTextStream(&streamed) << value;
        ASSERT_EQ(text(QString::number(value, 'g', 6)), text(streamed));
    }
}

TEST(Recognition, decodesAndJoins) {
    struct Row {
        const char* name;
        QByteArray bytes;
        QString joined;
    };
    const QString e = QString::fromUtf8("<a b='\xc3\xa9'/>");
    const Row rows[] = {
        {"plain", "<a\r\n b='1'\n/>\r", QStringLiteral("<a b='1'/>")},
        {"utf8", e.toUtf8(), e},
        {"utf8 mark", QByteArray("\xEF\xBB\xBF") + e.toUtf8(), e},
        {"utf16 mark", QByteArray("\xFF\xFE<\0a\0\r\0\n\0/\0>\0", 14), QStringLiteral("<a/>")},
        {"declared", "<?xml version='1.0' encoding='ISO-8859-1'?><a b='\xE9'/>",
         QStringLiteral("<?xml version='1.0' encoding='ISO-8859-1'?>") + e},
        {"declared unknown", "<?xml version='1.0' encoding='x-none'?>" + e.toUtf8(),
         QStringLiteral("<?xml version='1.0' encoding='x-none'?>") + e},
        {"not valid", "<a b='\xE9'/>", QString::fromUtf8("<a b='\xEF\xBF\xBD'/>")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(text(decodeJoined(row.bytes)), text(row.joined));
    }
}

}  // namespace
}  // namespace tzsvg
