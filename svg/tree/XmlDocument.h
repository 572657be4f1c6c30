// The tree of a document: the nodes that QDomDocument would have, in a tenth of its memory and a fraction of
// its time. Nodes, attributes and texts come from one arena and are freed together; names are looked up once
// and then compared as codes. Saved as text (svg/tree/SavedForm.h) it is what Qt's tree would save.
#pragma once

#include <QHash>
#include <QString>
#include <QStringView>
#include <deque>
#include <memory_resource>

#include "svg/tree/XmlNode.h"

namespace tzsvg {

class XmlDocument {
  public:
    XmlDocument();
    XmlDocument(const XmlDocument&) = delete;
    XmlDocument& operator=(const XmlDocument&) = delete;

    // Reads a text, without namespaces: names keep their prefixes, declarations are attributes. Texts of
    // nothing but white space are left out, as by Qt. False, and the document is empty, when the text is
    // beyond the limits or not well-formed.
    bool read(const QString& xml);

    void clear() noexcept;

    // The node above the root element, comments and instructions beside it.
    const XmlNode& top() const { return top_; }

    // The text up to the end of the document type declaration; empty when there is none.
    const QString& prolog() const { return prolog_; }

    // Replaces an element of a document by its children. The element itself keeps its links, so that a walk
    // that is at it can go on.
    static void dissolve(const XmlNode& element);

  private:
    // The readers: QXmlStreamReader and PlainXmlReader.
    template <class Reader>
    bool build(Reader& reader, const QString& xml);
    template <class Reader>
    XmlNode& addElement(XmlNode& parent, const Reader& reader);
    XmlNode& add(XmlNode& parent, NodeKind kind, const XmlName& name, qint64 line);
    const XmlName& named(QStringView text);
    QStringView keep(QStringView text);
    template <class T>
    T* allocate(size_t count) {
        return static_cast<T*>(room_.allocate(count * sizeof(T), alignof(T)));
    }

    std::pmr::monotonic_buffer_resource room_;  // the arena of nodes, attributes and texts
    std::deque<XmlName> names_;
    QHash<QStringView, const XmlName*> namesByText_;
    QString prolog_;
    XmlNode top_;
};

}  // namespace tzsvg
