// Bytes to the tree of a drawing: plain or gzip-compressed, in the encoding of their byte order mark or XML
// declaration, namespaces and the entities of the internal subset resolved. Nothing outside of the bytes is
// read.
#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <vector>

#include "normalize/Refusal.h"
#include "normalize/document/SourceElement.h"

namespace tznormalize {

// A prefix and the one namespace that it stands for in what is written.
struct Namespace {
    std::string prefix;
    std::string uri;
};

class SourceDocument {
  public:
    static constexpr uint32_t kMaxElements =
        4'000'000;  // in the text; what `use` makes of them is counted apart

    SourceDocument();
    ~SourceDocument();
    SourceDocument(const SourceDocument&) = delete;
    SourceDocument& operator=(const SourceDocument&) = delete;

    // Reads a document, once. What refuses it, if anything: then there is no root.
    Reason read(const QByteArray& bytes);

    // The `svg` element at the root.
    const SourceElement& root() const;

    size_t elementCount() const;
    size_t textSize() const;  // characters, as they were read
    const SourceElement& element(uint32_t index) const;

    // The first in document order that has the id; null when there is none.
    const SourceElement* byId(QStringView id) const;

    // What the element's href leads to inside of the document ("#id"); null when nowhere.
    const SourceElement* target(const SourceElement& element) const;

    // Whether an instruction in front of the root asks for a style sheet of another file. None is read.
    bool linksStyleSheet() const;

    // The namespaces of AttributeName::written.
    const std::vector<Namespace>& namespaces() const;

    struct Storage;

  private:
    Reason readByQt(const QString& text);

    std::unique_ptr<Storage> storage_;
};

}  // namespace tznormalize
