// Nodes saved as text: to the byte what QDomNode::save() makes of them at indent 0, but for one thing. Qt
// writes attributes in the order of a hash table whose seed differs from process to process; here the seed is
// always 0, so that the same document gives the same text everywhere. XmlDocument/equalsQts compares both.
#pragma once

#include <QHash>
#include <QString>
#include <QStringView>

namespace tzsvg {

class XmlNode;

// A name whose hash is the same in every process.
struct UnseededName {
    QString text;
    bool operator==(const UnseededName& other) const { return text == other.text; }
};
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
inline size_t qHash(const UnseededName& name, size_t) {
    return qHash(name.text, size_t{0});
}
#else
inline uint qHash(const UnseededName& name, uint) {
    return qHash(name.text, 0U);
}
#endif

// The attributes of one element, in the order in which Qt writes them.
class SavedAttributes {
  public:
    SavedAttributes() = default;
    // Those of a node of a document.
    explicit SavedAttributes(const XmlNode& element);

    // Adds an attribute, or replaces its value. The order depends on which came first.
    void set(const QString& name, const QString& value);
    void remove(const QString& name) { values_.remove({name}); }
    bool has(const QString& name) const { return values_.contains({name}); }
    bool isEmpty() const { return values_.isEmpty(); }
    // Empty when it is absent.
    QString value(const QString& name) const { return values_.value({name}); }

    // Calls take(name, value) for each of them in their order.
    template <class Take>
    void forEach(Take&& take) const {
        for (auto at = values_.cbegin(); at != values_.cend(); ++at) take(at.key().text, at.value());
    }

  private:
    QMultiHash<UnseededName, QString> values_;  // the container of QDomElement
};

// Appends name="value", with what must be escaped.
void saveAttribute(QString& text, const QString& name, QStringView value);

// Appends the opening of a start tag up to where it is closed: <name a="1" b="2"
void saveTagOpening(QString& text, const QString& name, const SavedAttributes& attributes);

// Appends a comment, which has no line end yet.
void saveComment(QString& text, QStringView comment);

// Appends a node and all that is below it, and the line end that is due behind it.
void saveNode(QString& text, const XmlNode& node);

}  // namespace tzsvg
