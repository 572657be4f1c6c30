// The survey and the flattening of switches, each against the toolkit's own look-up by name.
#include "import/DocumentSurvey.h"

#include <gtest/gtest.h>

#include <QDomDocument>
#include <algorithm>
#include <iterator>
#include <random>
#include <string>

#include "svg/tree/XmlDocument.h"
#include "tests/tree/ParsedDocument.h"

namespace tzsvg {
namespace {

// A random tree of elements, texts and comments, rich in the names that the survey collects; one line a node,
// so that line numbers tell the nodes apart.
void appendTree(std::string& xml, std::mt19937& random, int depth) {
    const auto below = [&](unsigned limit) { return random() % limit; };
    static constexpr const char* kNames[] = {"switch",   "switch",         "switch",  "g",
                                             "rect",     "defs",           "pattern", "linearGradient",
                                             "clipPath", "radialGradient", "i:pgf",   "Switch"};
    for (unsigned children = below(5); children > 0; --children) {
        const unsigned kind = below(12);
        if (kind == 0) {
            xml += "\n<!--c-->";
        } else if (kind == 1) {
            xml += "\ntext";
        } else {
            const std::string name = kNames[below(std::size(kNames))];
            xml += "\n<" + name + " id='" + std::to_string(xml.size()) + "'>";
            if (depth > 0) appendTree(xml, random, depth - 1);
            xml += "</" + name + ">";
        }
    }
}

std::string randomTree(unsigned seed) {
    std::mt19937 random(seed);  // the same trees every time
    const std::string root = seed % 7 == 0 ? "switch" : "svg";
    std::string xml = "<!--first--><" + root + ">";
    appendTree(xml, random, 5);
    return xml + "</" + root + "><?last one?>";
}

QDomDocument parsed(const std::string& xml) {
    QDomDocument document;
    EXPECT_TRUE(parseXml(QString::fromStdString(xml), document)) << xml;
    return document;
}

std::string describedNode(const QString& name, const QString& id, int line) {
    return name.toStdString() + '#' + id.toStdString() + '@' + std::to_string(line);
}

// Every node below one: kind, name, id, line.
void describe(const QDomNode& parent, std::string& text) {
    text += '(';
    for (QDomNode node = parent.firstChild(); !node.isNull(); node = node.nextSibling()) {
        text += describedNode(node.nodeName(), node.toElement().attribute(QStringLiteral("id")),
                              node.lineNumber());
        describe(node, text);
    }
    text += ')';
}

void describe(const XmlNode& parent, std::string& text) {
    text += '(';
    for (const XmlNode* node = parent.firstChild(); node; node = node->nextSibling()) {
        EXPECT_EQ(node->parent(), &parent);
        EXPECT_EQ(node->nextSibling() == nullptr, node == parent.lastChild());
        text += describedNode(node->name(), node->attribute(Attribute::kId).toString(), node->line());
        describe(*node, text);
    }
    text += ')';
}

template <class Node>
std::string described(const Node& document) {
    std::string text;
    describe(document, text);
    return text;
}

// Flattening in its plainest form: what the linear one has to come out as.
void flattenOneByOne(QDomDocument& document) {
    const QString name = QStringLiteral("switch");
    while (true) {
        const QDomElement element = document.elementsByTagName(name).item(0).toElement();
        if (element.isNull()) return;
        QDomNode parent = element.parentNode();
        for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
            parent.insertBefore(child.cloneNode(true), element);
        }
        parent.removeChild(element);
    }
}

TEST(SwitchFlattening, equalsOneByOne) {
    size_t flattened = 0;
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        const std::string xml = randomTree(seed);
        QDomDocument expected = parsed(xml);
        flattenOneByOne(expected);
        XmlDocument document;
        ASSERT_TRUE(document.read(QString::fromStdString(xml)));
        DocumentSurvey survey(document.top());
        flattened += survey.switches.size();
        flattenSwitches(survey);
        ASSERT_EQ(described(document.top()), described(expected)) << xml;
        EXPECT_TRUE(survey.switches.empty());
    }
    EXPECT_GT(flattened, 1000U) << "the trees hold enough to flatten";
}

TEST(DocumentSurvey, equalsLookUpByName) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        const std::string xml = randomTree(seed);
        SCOPED_TRACE(xml);
        const QDomDocument theToolkits = parsed(xml);
        XmlDocument document;
        ASSERT_TRUE(document.read(QString::fromStdString(xml)));
        const DocumentSurvey survey(document.top());
        const std::pair<const char*, const DocumentSurvey::List*> lists[] = {
            {"svg", &survey.roots},
            {"switch", &survey.switches},
            {"g", &survey.groups},
            {"defs", &survey.definitions},
            {"pattern", &survey.patterns},
            {"linearGradient", &survey.linearGradients},
            {"radialGradient", &survey.radialGradients},
            {"clipPath", &survey.clipPaths},
            {"i:pgf", &survey.privateData},
        };
        for (const auto& [name, list] : lists) {
            const QDomNodeList expected = theToolkits.elementsByTagName(QLatin1String(name));
            ASSERT_EQ(list->size(), static_cast<size_t>(expected.size())) << name;
            for (int i = 0; i < expected.size(); ++i) {
                const QDomElement element = expected.item(i).toElement();
                EXPECT_EQ((*list)[static_cast<size_t>(i)]->attribute(Attribute::kId).toString(),
                          element.attribute(QStringLiteral("id")))
                    << name << ' ' << i;
            }
        }
        const std::string nodes = described(document.top());
        EXPECT_EQ(survey.nodeCount, static_cast<size_t>(std::count(nodes.begin(), nodes.end(), '@')));
    }
    EXPECT_EQ(DocumentSurvey(XmlDocument().top()).nodeCount, 0U);
}

}  // namespace
}  // namespace tzsvg
