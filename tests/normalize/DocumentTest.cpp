// Bytes to the tree, and why bytes are refused.
#include <gtest/gtest.h>

#include <random>

#include "normalize/document/SourceDocument.h"
#include "svg/tree/PlainXmlReader.h"

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

// Everything that was read, as text; the refusal's number when nothing was.
QString outline(const SourceElement& element) {
    QString out =
        QStringLiteral("<%1 %2:%3").arg(text(element.localName())).arg(element.line()).arg(element.column());
    for (const SourceAttribute& one : element)
        out += QStringLiteral(" %1='%2'").arg(QString::fromStdString(one.name->written), text(one.value));
    out += u'>' + text(element.text());
    for (const SourceElement* child = element.firstChild(); child; child = child->nextSibling())
        out += outline(*child);
    return out + u'>' + text(element.tail());
}
QString outline(const QString& xml) {
    SourceDocument document;
    const Reason reason = document.read(xml.toUtf8());
    return reason ? QString::number(int(reason.refusal)) : outline(document.root());
}

// A processing instruction at the end leaves a document to Qt's reader, which has to find the same in it. No
// encoding is named: Qt 5.15 refuses names that it does not know, though the text is decoded already.
TEST(SourceDocument, equalsQts) {
    const QString whole = QStringLiteral(
        "<?xml version='1.0'\n standalone='yes'?>\n<!DOCTYPE svg PUBLIC 'a'\n 'b'>\n<!-- a\n - b -->\n"
        "<svg xmlns:a='urn:one'\n\ta:b='1\n2\t3'\n>\n <text id = 'a'>one\n<tspan>&lt;</tspan>\n "
        "two</text\n>\n"
        "\n<g\n><a:c d='&quot;&amp;\n'/><text><![CDATA[a\nb]]>\tc</text></g>\n</svg>\n");
    const QString odd = QStringLiteral("<>&\"'/=!?-[];: \t\n\rx0\u0001\u00A0");
    std::mt19937 random(1);  // the same every time
    int plain = 0;
    int refused = 0;
    for (int change = 0; change < 3000 && !HasFailure(); ++change) {
        QString xml = whole;
        const auto at = static_cast<int>(random() % static_cast<unsigned>(xml.size()));
        const QChar one = odd.at(static_cast<int>(random() % static_cast<unsigned>(odd.size())));
        if (change % 3 == 0) {
            xml[at] = one;
        } else if (change % 3 == 1) {
            xml.insert(at, one);
        } else {
            xml.remove(at, 1 + static_cast<int>(random() % 3));
        }
        const QString ours = outline(xml);
        EXPECT_EQ(ours, outline(xml + QStringLiteral("<?x?>"))) << xml.toStdString();
        tzsvg::PlainXmlReader reader(xml, tzsvg::PlainXmlReader::Lines::kMany);
        while (!reader.atEnd()) reader.readNext();
        plain += reader.hasError() ? 0 : 1;
        refused += ours.size() == 1 ? 1 : 0;
    }
    EXPECT_GT(plain, 500);
    EXPECT_GT(refused, 1000);
    EXPECT_LT(plain + refused, 3000) << "nothing was left for Qt to read";
}

}  // namespace
}  // namespace tznormalize
