// The one way into Qt's streaming reader: for documents of the loader and stored fragments of the
// saver.
#pragma once

#include <QString>
#include <QXmlStreamReader>

namespace tzsvg {

// A reader without namespaces: names keep their prefixes, declarations are attributes.
class XmlReader {
  public:
    explicit XmlReader(const QString& xml);

    // Whether the text is within the limits of svg/tree/DocumentLimits.h. Nobody reads one that is not.
    bool withinLimits() const;

    // What the stream reads; its offsets count in this text.
    const QString& text() const { return text_; }
    QXmlStreamReader& stream() { return stream_; }

  private:
    const QString text_;
    QXmlStreamReader stream_;
};

}  // namespace tzsvg
