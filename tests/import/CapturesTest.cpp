// What the import keeps as text: captures, group records and tags' texts, from whole documents.
#include <gtest/gtest.h>

#include "import/Captures.h"
#include "svg/tree/SavedForm.h"
#include "tests/common/Table.h"
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
    for (const auto& row : readTable("import/definitions.txt", 3)) {
        const Parsed parsed(row[0].c_str());
        EXPECT_EQ(text(captureDefinitions(parsed.survey, 1 << 20)), row[1]) << row[0];
        EXPECT_EQ(text(captureClipPaths(parsed.survey, 1 << 20)), row[2]) << row[0];
    }
    const Parsed mixed("<svg><defs><![CDATA[<&]]><!--c--><q:r xmlns:q='u' q:s='\xc3\xa9'/></defs></svg>");
    const std::string definitions = text(captureDefinitions(mixed.survey, 1 << 20));
    for (const char* const part : {"<![CDATA[<&]]>", "<!--c-->", "q:s=\"\xc3\xa9\"", "xmlns:q=\"u\""})
        EXPECT_NE(definitions.find(part), std::string::npos) << part;
    EXPECT_EQ(text(withoutLineBreaks(QStringLiteral("a\n\t\rb&#xa;&#xA;&#xd;&#xD;&#x9;c&#x0A;&#XA;&#10;"))),
              "abc&#x0A;&#XA;&#10;");
}

TEST(Groups, records) {
    for (const auto& row : readTable("import/groups.txt", 2)) {
        const Parsed parsed(row[0].c_str());
        GroupTable table;
        QString records;
        const bool captured = captureGroups(parsed.survey, table, records);
        EXPECT_EQ(captured ? text(records) : "refused", row[1]) << row[0];
    }
}

TEST(Doctype, text) {
    for (const auto& row : readTable("import/doctypes.txt", 2))
        EXPECT_EQ(text(captureDoctype(Parsed(row[0].c_str()).document)), row[1]) << row[0];

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

}  // namespace
}  // namespace tzsvg
