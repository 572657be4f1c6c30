// Bytes to the tree, and why bytes are refused.
#include <gtest/gtest.h>

#include "normalize/document/SourceDocument.h"

namespace tznormalize {
namespace {

QString text(QStringView view) {
    return view.toString();
}

TEST(SourceDocument, refusals) {
    const QByteArray deep = QByteArray("<g>").repeated(300);
    const QByteArray bomb = "<!DOCTYPE svg [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '" +
                            QByteArray("&a;").repeated(100) + "'><!ENTITY c '" +
                            QByteArray("&b;").repeated(100) + "'>]><svg>" +
                            QByteArray("<text>&c;</text>").repeated(100) + "</svg>";
    const struct {
        const char* name;
        QByteArray bytes;
        Refusal refusal;
        qint64 line;
    } cases[] = {
        {"empty", "", Refusal::kNotSvg, 0},
        {"words", "hello", Refusal::kNotSvg, 0},
        {"page", "\n<!DOCTYPE html>\n<html><br><p></html>", Refusal::kNotSvg, 3},
        {"page that ends deep", "<html>" + deep, Refusal::kNotSvg, 1},
        {"another namespace", "<svg xmlns='urn:x'/>", Refusal::kNotSvg, 1},
        {"cut", "<svg>\n<g", Refusal::kNotWellFormed, 2},
        {"crossed", "<svg>\n<g>\n<a></g></a></svg>", Refusal::kNotWellFormed, 3},
        {"deep", "<svg>" + deep, Refusal::kTooDeep, 0},
        {"bomb", bomb, Refusal::kNotWellFormed, 1},
        {"broken gzip", "\x1f\x8b rest", Refusal::kUnreadable, 0},
    };
    for (const auto& c : cases) {
        SourceDocument document;
        const Reason reason = document.read(c.bytes);
        EXPECT_EQ(reason.refusal, c.refusal) << c.name << ": " << reason.text.toStdString();
        EXPECT_EQ(reason.line, c.line) << c.name;
        EXPECT_FALSE(reason.text.isEmpty()) << c.name;
    }
}

TEST(SourceDocument, encodings) {
    const QString drawing = QStringLiteral("<svg id='\u00e9\u0416'/>");
    const auto declared = [&](const char* name) {
        return "<?xml version='1.0' encoding='" + QByteArray(name) + "'?>";
    };
    const struct {
        const char* name;
        QByteArray bytes;
        QString id;
    } cases[] = {
        {"bare UTF-8", drawing.toUtf8(), QStringLiteral("\u00e9\u0416")},
        {"UTF-8 with a mark", "\xEF\xBB\xBF" + drawing.toUtf8(), QStringLiteral("\u00e9\u0416")},
        {"Latin 1", declared("ISO-8859-1") + "<svg id='\xe9'/>", QStringLiteral("\u00e9")},
        {"Windows", declared("windows-1251") + "<svg id='\xc6'/>", QStringLiteral("\u0416")},
        {"UTF-16 without a mark", QByteArray("<\0s\0v\0g\0 \0i\0d\0=\0'\0\x16\x04'\0/\0>\0", 26),
         QStringLiteral("\u0416")},
        {"gzip", QByteArray::fromHex("1f8b0800000000000203b3292e4b57c84cb155af52d7b7030012459bf70d000000"),
         QStringLiteral("z")},
    };
    for (const auto& c : cases) {
        SourceDocument document;
        const Reason reason = document.read(c.bytes);
        ASSERT_FALSE(reason) << c.name << ": " << reason.text.toStdString();
        EXPECT_EQ(text(document.root().id()), c.id) << c.name;
    }
}

// Prefixes that nobody declares, entities with elements, text around elements.
TEST(SourceDocument, tree) {
    SourceDocument document;
    ASSERT_FALSE(
        document.read("<?xml version='1.0'?>\n"
                      "<!DOCTYPE svg [<!ENTITY r \"<rect id='in'/>\">]>\n"
                      "<svg xmlns='http://www.w3.org/2000/svg' xmlns:a='urn:one' id=' root '>\n"
                      "  <g a:x='1' xlink:href='#in' bare:y='2' href='#t'>&r;</g>\n"
                      "  <x:g xmlns:x='urn:two' xmlns:a='urn:two' a:x='3'/>\n"
                      "  <text id='t'>one<!-- - --> two<tspan>3</tspan><![CDATA[ <4> ]]></text>\n"
                      "</svg>"));
    const SourceElement& root = document.root();
    EXPECT_EQ(text(root.id()), QStringLiteral("root"));
    EXPECT_EQ(root.line(), 3);
    EXPECT_EQ(root.column(), 1);
    const SourceElement& group = *root.firstChild();
    EXPECT_EQ(group.tag(), Tag::kG);
    EXPECT_EQ(group.line(), 4);
    EXPECT_EQ(group.column(), 3);
    EXPECT_EQ(group.firstChild()->tag(), Tag::kRect);
    EXPECT_EQ(text(group.href()), QStringLiteral("#t"));
    EXPECT_EQ(text(group.attribute(Name::kXlinkHref)), QStringLiteral("#in"));
    EXPECT_EQ(document.target(group), document.byId(u"t"));
    EXPECT_EQ(group.begin()->name->written, "a:x");
    const SourceElement& foreign = *group.nextSibling();
    EXPECT_EQ(foreign.tag(), Tag::kForeign);
    EXPECT_NE(foreign.begin()->name->written, "a:x") << "a prefix stands for one namespace in the result";
    const SourceElement& words = *foreign.nextSibling();
    EXPECT_EQ(text(words.text()), QStringLiteral("one two"));
    EXPECT_EQ(text(words.firstChild()->text()), QStringLiteral("3"));
    EXPECT_EQ(text(words.firstChild()->tail()), QStringLiteral(" <4> "));
    EXPECT_TRUE(root.text().isEmpty());
}

}  // namespace
}  // namespace tznormalize
