// A document of the import, read from a text, and ways to its nodes.
#pragma once

#include <gtest/gtest.h>

#include "svg/tree/XmlDocument.h"

namespace tzsvg {

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
