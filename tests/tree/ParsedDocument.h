// A document of the import, read from a text, and ways to its nodes; the same of Qt, to compare with.
#pragma once

#include <gtest/gtest.h>

#include <QDomDocument>

#include "svg/tree/XmlDocument.h"
#include "svg/tree/XmlReader.h"

namespace tzsvg {

// Qt's tree of the same text.
inline bool parseXml(const QString& xml, QDomDocument& document) {
    XmlReader reader(xml);
    return reader.withinLimits() && document.setContent(&reader.stream(), false);
}

struct ParsedDocument {
    explicit ParsedDocument(const QString& xml) { EXPECT_TRUE(document.read(xml)) << xml.toStdString(); }
    explicit ParsedDocument(const char* xml) : ParsedDocument(QString::fromUtf8(xml)) {}

    // The first element.
    const XmlNode& root() const {
        const XmlNode* node = document.top().firstChild();
        while (!node->isElement()) node = node->nextSibling();
        return *node;
    }

    // The first element of a name, which the document has.
    const XmlNode& named(const char* name) const {
        const XmlNode* node = &root();
        while (!node->isElement() || node->name() != QLatin1String(name))
            node = node->nextBelow(document.top());
        return *node;
    }

    XmlDocument document;
};

}  // namespace tzsvg
