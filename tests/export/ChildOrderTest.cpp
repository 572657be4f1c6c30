// Placing children by index: the result against inserting them one by one with Qt; and what is saved of a
// polygon's element against what Qt saves.
#include "export/ChildOrder.h"

#include <gtest/gtest.h>

#include <QDomDocument>
#include <QHashFunctions>
#include <QTextStream>
#include <random>

#include "export/ElementBuilder.h"
#include "svg/tree/XmlDocument.h"

namespace tzsvg {
namespace {

QString saved(const QDomNode& node) {
    QString text;
    QTextStream stream(&text);
    node.save(stream, 0);
    stream.flush();
    return text;
}

// As the drawing index is meant, one by one.
void insertAt(QDomElement parent, const QDomElement& child, uint32_t index) {
    const QDomNodeList children = parent.childNodes();
    if (index < static_cast<uint32_t>(children.size())) {
        parent.insertBefore(child, children.at(static_cast<int>(index)));
    } else {
        parent.appendChild(child);
    }
}

struct Pattern {
    const char* name;
    uint32_t (*index)(uint32_t i, std::mt19937& random);
};

TEST(ChildOrder, equalsInsertion) {
    const Pattern patterns[] = {
        {"all first", [](uint32_t, std::mt19937&) -> uint32_t { return 0; }},
        {"all second", [](uint32_t, std::mt19937&) -> uint32_t { return 1; }},
        {"rising", [](uint32_t i, std::mt19937&) { return i; }},
        {"falling", [](uint32_t i, std::mt19937&) { return 200 - i; }},
        {"beyond the end", [](uint32_t, std::mt19937&) { return UINT32_MAX; }},
        {"random",
         [](uint32_t i, std::mt19937& random) { return static_cast<uint32_t>(random() % (i + 3)); }},
    };
    for (const Pattern& pattern : patterns) {
        for (const uint32_t count : {0U, 1U, 2U, 3U, 200U}) {
            // No line is broken beside a text.
            const QString start = QStringLiteral("<svg><!--first-->text<defs/></svg>");
            QDomDocument expected;
            ASSERT_TRUE(expected.setContent(start));
            XmlDocument parsed;
            ASSERT_TRUE(parsed.read(start));
            OutputDocument document;
            OutputElement& root = document.makeElement(QStringLiteral("svg"));
            root.addChildrenOf(*parsed.top().firstChild());
            ElementBuilder builder;
            ChildOrder order(root);
            std::mt19937 random(7);
            for (uint32_t i = 0; i < count; ++i) {
                const uint32_t index = pattern.index(i, random);
                const std::string id = std::to_string(i);
                if (i % 10 == 9) {
                    expected.documentElement().appendChild(expected.createElement(QStringLiteral("g")));
                    order.append(document.makeElement(QStringLiteral("g")));
                    continue;
                }
                QDomElement line = expected.createElement(QStringLiteral("line"));
                line.setAttribute(QStringLiteral("id"), QString::fromStdString(id));
                insertAt(expected.documentElement(), line, index);
                builder.start(Element::kLine);
                builder.set(Attribute::kId, id);
                order.place(document.addPolygon(builder), index);
            }
            order.apply();
            EXPECT_EQ(QString::fromStdString(document.save(root)), saved(expected))
                << pattern.name << ", " << count;
        }
    }
}

// Also pins the attribute order: both are what Qt makes of the same attributes, under the hash seed 0.
TEST(ElementBuilder, savesAsQt) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 2, 0)
    QHashSeed::setDeterministicGlobalSeed();
#else
    qSetGlobalQHashSeed(0);
#endif
    const char* const values[] = {"", "a", "\"<>&'", "tab\t, line\n, \xC3\xA9 \xF0\x9F\x98\x80", "]]>", "a"};
    const Attribute names[] = {Attribute::kData,   Attribute::kId,      Attribute::kFill,
                               Attribute::kStroke, Attribute::kOpacity, Attribute::kTransform};
    const char* const texts[] = {"d", "id", "fill", "stroke", "opacity", "transform"};
    std::mt19937 random(3);
    QDomDocument document;
    ElementBuilder builder;
    for (int i = 0; i < 500; ++i) {
        QDomElement element = document.createElement(QStringLiteral("path"));
        builder.start(Element::kPath);
        for (size_t a = 0; a < std::size(names); ++a) {
            if (random() % 3 == 0) continue;
            const char* const value = values[random() % std::size(values)];
            element.setAttribute(QLatin1String(texts[a]), QString::fromUtf8(value));
            builder.set(names[a], value);
        }
        std::string text;
        builder.save(text);
        ASSERT_EQ(text + '\n', saved(element).toStdString());
    }
}

}  // namespace
}  // namespace tzsvg
