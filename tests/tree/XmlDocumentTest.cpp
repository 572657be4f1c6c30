// The import's document against Qt's: the same nodes from any text, and the same text from any node.
#include "svg/tree/XmlDocument.h"

#include <gtest/gtest.h>

#include <QDomDocument>
#include <QHashFunctions>
#include <QTextStream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "svg/tree/PlainXmlReader.h"
#include "svg/tree/SavedForm.h"
#include "tests/common/TestFolder.h"
#include "tests/tree/ParsedDocument.h"
#include "tests/tree/RandomXml.h"

namespace tzsvg {
namespace {

// Saved attributes are compared with what Qt saves under the hash seed 0.
const bool kIsSeeded = [] {
#if QT_VERSION >= QT_VERSION_CHECK(6, 2, 0)
    QHashSeed::setDeterministicGlobalSeed();
#else
    qSetGlobalQHashSeed(0);
#endif
    return true;
}();

bool isBlankCharacterData(const QDomNode& node) {
    return node.isCDATASection() && node.nodeValue().trimmed().isEmpty();
}

// Qt 5's own tree drops character data of blanks; the import's documents have it with both.
QDomNode next(QDomNode node) {
    while (isBlankCharacterData(node)) node = node.nextSibling();
    return node;
}
const XmlNode* next(const XmlNode* node) {
    while (node && node->kind() == NodeKind::kCharacterData && node->text().trimmed().isEmpty())
        node = node->nextSibling();
    return node;
}

void expectSameAttributes(const XmlNode& ours, const QDomElement& theirs) {
    ASSERT_EQ(std::distance(ours.begin(), ours.end()), theirs.attributes().count());
    for (const XmlAttribute& attribute : ours) {
        ASSERT_TRUE(theirs.hasAttribute(attribute.name->text));
        EXPECT_EQ(attribute.value.toString(), theirs.attribute(attribute.name->text));
        const Attribute known = attribute.name->attribute;
        EXPECT_EQ(known, attributeNamed(attribute.name->text));
        if (known != Attribute::kOther) {
            EXPECT_EQ(ours.attribute(known).toString(), attribute.value.toString());
        }
    }
    for (const Attribute known :
         {Attribute::kId, Attribute::kStyle, Attribute::kWidth, Attribute::kViewBox}) {
        EXPECT_EQ(ours.has(known), theirs.hasAttribute(nameOf(known)));
    }
}

void expectSameText(const XmlNode& ours, const QDomNode& theirs) {
    QString text;
    saveNode(text, ours);
    QString expected;
    QTextStream expectedStream(&expected);
    theirs.save(expectedStream, 0);
    expectedStream.flush();
    EXPECT_EQ(text.toStdString(), expected.toStdString());
}

// `belowSwitch` tells whether a line is to be known.
void expectSame(const XmlNode& ours, const QDomNode& theirs, bool belowSwitch, bool compareTexts) {
    ASSERT_EQ(ours.name(), theirs.nodeName());
    ASSERT_EQ(ours.isElement(), theirs.isElement());
    EXPECT_EQ(ours.isText(), theirs.isText());
    EXPECT_EQ(ours.line(), belowSwitch ? XmlNode::kNoLine : theirs.lineNumber());
    if (ours.isElement()) {
        expectSameAttributes(ours, theirs.toElement());
    } else if (ours.name() != QLatin1String("xml")) {
        EXPECT_EQ(ours.text().toString(), theirs.nodeValue());
    }
    if (compareTexts && ours.name() != QLatin1String("xml")) expectSameText(ours, theirs);

    const bool nowBelow = belowSwitch || ours.element() == Element::kSwitch;
    const XmlNode* child = next(ours.firstChild());
    for (QDomNode expected = next(theirs.firstChild()); !expected.isNull();
         expected = next(expected.nextSibling())) {
        ASSERT_NE(child, nullptr);
        EXPECT_EQ(child->parent(), &ours);
        expectSame(*child, expected, nowBelow, compareTexts);
        if (testing::Test::HasFailure()) return;
        child = next(child->nextSibling());
    }
    EXPECT_EQ(child, nullptr);
}

// Reads a text both ways, and compares what is read. Whether it is one.
bool readsTheSame(const QString& xml) {
    SCOPED_TRACE(xml.toStdString());
    QDomDocument expected;
    const bool isRead = parseXml(xml, expected);
    XmlDocument document;
    EXPECT_EQ(document.read(xml), isRead);
    if (!isRead) {
        EXPECT_EQ(document.top().firstChild(), nullptr);
        EXPECT_TRUE(document.prolog().isEmpty());
        return false;
    }
    // Qt's texts are compared where its tree has all nodes.
    const bool hasAllNodes = QT_VERSION_MAJOR >= 6 || !xml.simplified().remove(u' ').contains(u"[CDATA[]");
    const XmlNode* node = document.top().firstChild();
    for (QDomNode child = expected.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (child.isDocumentType()) continue;
        EXPECT_NE(node, nullptr);
        if (!node) break;
        expectSame(*node, child, false, hasAllNodes);
        node = node->nextSibling();
    }
    EXPECT_EQ(node, nullptr);
    EXPECT_EQ(document.prolog().endsWith(u'>'), !expected.doctype().name().isEmpty())
        << document.prolog().toStdString();
    return true;
}

TEST(XmlDocument, equalsQts) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        ASSERT_TRUE(readsTheSame(QString::fromStdString(randomDocument(seed))));
        if (HasFailure()) return;
    }
}

bool isPlain(const QString& xml) {
    PlainXmlReader reader(xml);
    while (!reader.atEnd()) reader.readNext();
    return !reader.hasError();
}

// Nearly all texts never come to Qt's reader. What is done to them here makes most of them such that
// Qt has to decide, and some such that it refuses.
TEST(XmlDocument, equalsQtsWithPlainTexts) {
    static const QString kOdd =
        QStringLiteral("<>&\"'/=!?-[];#:. \t\nxA0_\u0001\u007F\u0085\u00A0\u0394\uFFFE") + QChar(0xD83D) +
        QChar(0);
    std::mt19937 random(1);  // the same every time
    size_t plain = 0;
    size_t read = 0;
    size_t refused = 0;
    for (int round = 0; round < 150; ++round) {
        const QString whole = QString::fromStdString(plainDocument(random));
        ASSERT_TRUE(isPlain(whole)) << whole.toStdString();
        ASSERT_TRUE(readsTheSame(whole));
        for (int change = 0; change < 60 && !HasFailure(); ++change) {
            QString xml = whole;
            const auto at = static_cast<int>(random() % static_cast<unsigned>(xml.size()));
            const QChar odd = kOdd.at(static_cast<int>(random() % static_cast<unsigned>(kOdd.size())));
            switch (random() % 4) {
                case 0:
                    xml[at] = odd;
                    break;
                case 1:
                    xml.insert(at, odd);
                    break;
                case 2:
                    xml.remove(at, 1 + static_cast<int>(random() % 3));
                    break;
                default:
                    xml.insert(at, xml.mid(at, static_cast<int>(random() % 30)));
                    break;
            }
            plain += isPlain(xml) ? 1 : 0;
            ++(readsTheSame(xml) ? read : refused);
        }
    }
    EXPECT_GT(refused, 1000U);
    EXPECT_GT(plain, 1000U);
    EXPECT_GT(read, plain) << "nothing was left for Qt to read";
}

// What is nearly plain, at whose edges both have to agree.
TEST(XmlDocument, equalsQtsAtTheEdges) {
    const auto read = [](const std::string& xml) { return readsTheSame(QString::fromStdString(xml)); };
    for (const std::string declaration :
         {"version='1.0' encoding?", "version='1.0' encoding=?", "version='1.0' standalone=?",
          "version='1.0' encoding='utf-8' standalone?", "version='1.0' encoding='utf-8' encoding='utf-8'?",
          "version='1.0' standalone='no' encoding='utf-8'?", "version='1.0' encoding=''?", "version='1.1'?",
          "encoding='utf-8'?", "version='1.0'standalone='no'?", "version='1.0' standalone='no' ?", "?",
          "version = '1.0'?"}) {
        read("<?xml " + declaration + "><svg/>");
    }
    for (const std::string type :
         {"svg PUBLIC 'a'", "svg PUBLIC 'a''b'", "svg PUBLIC 'a' 'b", "svg PUBLIC '{' 'b'", "svg SYSTEM 'b'",
          "svg []", "svg PUBLIC 'a' 'b' []", "1svg", "", "a:b", ":"}) {
        read("<!DOCTYPE " + type + "><svg/>");
    }
    for (const size_t length : {4095U, 4096U, 4097U, 4098U}) {
        const std::string name(length, 'n');
        read("<" + name + "/>");
        read("<svg " + name + "='1'/>");
        read("<a:" + name + "/>");
        read("<" + name + ":a/>");
    }
    for (const size_t count : {255U, 256U, 257U, 258U}) {
        read(repeated("<g>", count) + repeated("</g>", count));
        std::string attributes;
        for (size_t i = 0; i < count; ++i) attributes.append(" a").append(std::to_string(i)).append("=''");
        read("<svg" + attributes + "/>");
    }
    const std::string text = repeated("lang &amp; breit ", 20000);
    EXPECT_TRUE(read("<svg d='" + text + "'>" + text + "<!--" + text + "--></svg>"));
}

// Cut off anywhere, a text is read when Qt reads it, and leaves nothing behind when it is not.
TEST(XmlDocument, refusesWhatQtRefuses) {
    const std::string whole = randomDocument(3);
    size_t refused = 0;
    for (size_t length = 0; length <= whole.size() && !HasFailure(); length += 3) {
        for (const char* const end : {"", "</svg>", "<svg/>", "&", "]]>"}) {
            const QString xml = QString::fromUtf8((whole.substr(0, length) + end).c_str());
            refused += readsTheSame(xml) ? 0 : 1;
        }
    }
    EXPECT_GT(refused, whole.size() / 2);
}

}  // namespace
}  // namespace tzsvg
