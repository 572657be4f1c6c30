// Qt's streaming reader, set up the same way for everything that is read: documents, and the fragments that a
// scene keeps of them.
#pragma once

#include <QString>
#include <QXmlStreamReader>

namespace tzsvg {

// A reader without namespaces: names keep their prefixes, declarations are attributes.
class XmlReader {
  public:
    explicit XmlReader(const QString& xml);

    // Whether the text is within the limits of svg/tree/DocumentLimits.h. To be asked before anything is
    // read.
    bool withinLimits() const;

    // What the stream reads; its offsets count in this text.
    const QString& text() const { return text_; }
    QXmlStreamReader& stream() { return stream_; }

  private:
    const QString text_;
    QXmlStreamReader stream_;
};

}  // namespace tzsvg
