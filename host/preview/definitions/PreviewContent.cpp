#include "host/preview/definitions/PreviewContent.h"

#include <QBuffer>
#include <QImageReader>
#include <QSet>
#include <QXmlStreamWriter>
#include <algorithm>

#include "host/preview/PreviewText.h"

namespace tzhost {
namespace {

constexpr int kDeepest = 32;
constexpr int kMostElements = 20'000;
constexpr int kMostGradientStops = 1024;
constexpr qint64 kMostPicturePixels = qint64{1} << 24;  // of one picture

constexpr const char* kShapes[] = {"path", "rect", "circle", "ellipse", "line", "polyline", "polygon"};
constexpr const char* kGeometry[] = {"d",  "x", "y",  "width", "height", "rx", "ry",    "cx",
                                     "cy", "r", "x1", "y1",    "x2",     "y2", "points"};
// No dashes: each takes memory, however short.
constexpr const char* kProperties[] = {
    "fill",           "fill-opacity",    "fill-rule", "stroke",  "stroke-opacity",   "stroke-width",
    "stroke-linecap", "stroke-linejoin", "opacity",   "display", "stroke-miterlimit"};
constexpr const char* kGradientParts[] = {"x1",
                                          "y1",
                                          "x2",
                                          "y2",
                                          "cx",
                                          "cy",
                                          "r",
                                          "fx",
                                          "fy",
                                          "offset",
                                          "gradientUnits",
                                          "gradientTransform",
                                          "spreadMethod",
                                          "stop-color",
                                          "stop-opacity"};

class ContentWriter {
  public:
    using Element = PreviewDefinitions::Element;

    ContentWriter(const PreviewDefinitions& definitions, bool asClipPath)
        : definitions_(definitions), asClipPath_(asClipPath), xml_(&bytes_) {}

    QByteArray write(int element) {
        xml_.writeStartElement(QStringLiteral("svg"));
        xml_.writeDefaultNamespace(QStringLiteral("http://www.w3.org/2000/svg"));
        xml_.writeNamespace(QStringLiteral("http://www.w3.org/1999/xlink"), QStringLiteral("xlink"));
        xml_.writeStartElement(QStringLiteral("g"));
        if (asClipPath_) writeGiven(at(element), "transform");
        writeChildren(element, 0);
        xml_.writeEndElement();
        // Behind the shapes: only then is it known which are asked for. The renderer resolves them at the
        // end.
        while (!gradients_.isEmpty()) writeGradient(gradients_.takeLast());
        xml_.writeEndElement();
        return bytes_;
    }

  private:
    const Element& at(int element) const { return definitions_.elements()[static_cast<size_t>(element)]; }

    void writeGiven(const Element& element, const char* name) {
        const QString text = element.attribute(name);
        if (!text.isEmpty()) xml_.writeAttribute(QLatin1String(name), text);
    }

    void writeChildren(int element, int depth) {
        for (int child = element + 1; child < at(element).end; child = at(child).end)
            writeElement(child, depth);
    }

    void writeElement(int index, int depth) {
        const Element& element = at(index);
        if (depth > kDeepest || ++written_ > kMostElements) return;
        const auto isNamed = [&](const char* name) { return element.name == QLatin1String(name); };
        if (isNamed("g")) {
            writeGroup(element, element.attribute("transform"), [&] { writeChildren(index, depth + 1); });
        } else if (isNamed("use")) {
            const int target = definitions_.origin(index);
            const QString offset = QStringLiteral(" translate(%1,%2)")
                                       .arg(leadingNumber(element.attribute("x")).value_or(0.0))
                                       .arg(leadingNumber(element.attribute("y")).value_or(0.0));
            if (target < 0) return;
            writeGroup(element, element.attribute("transform") + offset,
                       [&] { writeElement(target, depth + 1); });
        } else if (isNamed("image") && !asClipPath_) {
            writePicture(element);
        } else if (std::any_of(std::begin(kShapes), std::end(kShapes), isNamed)) {
            xml_.writeStartElement(element.name);
            for (const char* const name : kGeometry) writeGiven(element, name);
            writeGiven(element, "transform");
            writeLook(element);
            xml_.writeEndElement();
        }
    }

    template <class Content>
    void writeGroup(const Element& element, const QString& transform, Content&& content) {
        xml_.writeStartElement(QStringLiteral("g"));
        if (!transform.isEmpty()) xml_.writeAttribute(QStringLiteral("transform"), transform);
        if (!asClipPath_) writeLook(element);
        content();
        xml_.writeEndElement();
    }

    void writeLook(const Element& element) {
        const auto valueOf = [&](const char* name) {
            const QString styled = styleProperty(element.attribute("style"), name);
            return styled.isEmpty() ? element.attribute(name) : styled;
        };
        if (asClipPath_) {
            const QString rule = valueOf("clip-rule");
            if (!rule.isEmpty()) xml_.writeAttribute(QStringLiteral("fill-rule"), rule);
            return;
        }
        for (const char* const name : kProperties) {
            const QString value = valueOf(name);
            if (value.isEmpty()) continue;
            xml_.writeAttribute(QLatin1String(name), value);
            const QString id = readReference(value);
            if (!id.isEmpty()) askForGradient(definitions_.find(id, {"linearGradient", "radialGradient"}));
        }
    }

    void askForGradient(int gradient) {
        if (gradient < 0 || asked_.contains(gradient)) return;
        asked_.insert(gradient);
        gradients_.push_back(gradient);
    }

    void writeGradient(int index) {
        const Element& element = at(index);
        xml_.writeStartElement(element.name);
        writeGiven(element, "id");
        writeParts(element);
        const int origin = definitions_.origin(index);
        if (origin >= 0 && at(origin).name.endsWith(QLatin1String("Gradient"))) {
            xml_.writeAttribute(QStringLiteral("xlink:href"), QLatin1Char('#') + at(origin).attribute("id"));
            askForGradient(origin);
        }
        int stops = 0;
        for (int i = index + 1; i < element.end && stops < kMostGradientStops; ++i) {
            if (at(i).name != QLatin1String("stop")) continue;
            ++stops;
            xml_.writeStartElement(QStringLiteral("stop"));
            writeParts(at(i));
            xml_.writeEndElement();
        }
        xml_.writeEndElement();
    }

    void writeParts(const Element& element) {
        for (const char* const name : kGradientParts) {
            const QString styled = styleProperty(element.attribute("style"), name);
            const QString value = styled.isEmpty() ? element.attribute(name) : styled;
            if (!value.isEmpty()) xml_.writeAttribute(QLatin1String(name), value);
        }
    }

    // A picture within the drawing, if it is one that Qt reads and not too large.
    void writePicture(const Element& element) {
        QString link = element.attribute("xlink:href");
        if (link.isEmpty()) link = element.attribute("href");
        const auto comma = link.indexOf(QLatin1Char(','));
        if (!link.startsWith(QLatin1String("data:")) || !link.left(comma).endsWith(QLatin1String(";base64")))
            return;
        QByteArray picture = QByteArray::fromBase64(link.mid(comma + 1).toLatin1());
        QBuffer buffer(&picture);
        buffer.open(QIODevice::ReadOnly);
        QImageReader reader(&buffer);
        // By what its first bytes say, not by what it is called: a drawing is no picture here.
        const QByteArray format = QImageReader::imageFormat(&buffer);
        const QSize size = reader.size();
        if ((format != "png" && format != "jpeg" && format != "gif") || size.isEmpty() ||
            qint64{size.width()} * size.height() > kMostPicturePixels) {
            return;
        }
        pixels_ += qint64{size.width()} * size.height();
        if (pixels_ > 4 * kMostPicturePixels) return;
        xml_.writeStartElement(QStringLiteral("image"));
        for (const char* const name : {"x", "y", "width", "height", "transform", "opacity"})
            writeGiven(element, name);
        xml_.writeAttribute(QStringLiteral("xlink:href"),
                            QLatin1String("data:image/") + QLatin1String(format) + QLatin1String(";base64,") +
                                QLatin1String(picture.toBase64()));
        xml_.writeEndElement();
    }

    const PreviewDefinitions& definitions_;
    const bool asClipPath_;
    QByteArray bytes_;
    QXmlStreamWriter xml_;
    QList<int> gradients_;  // yet to be written
    QSet<int> asked_;
    int written_ = 0;
    qint64 pixels_ = 0;
};

}  // namespace

QByteArray definitionContent(const PreviewDefinitions& definitions, int element, bool asClipPath) {
    return ContentWriter(definitions, asClipPath).write(element);
}

}  // namespace tzhost
