// Documents nested, multiplied, styled or packed as deeply as asked for, for the tests of what may go to a
// renderer.
#pragma once

#include <zlib.h>

#include <QBuffer>
#include <QByteArray>
#include <QImage>

namespace tzsvg {

inline QByteArray svg(const QByteArray& content) {
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' width='9' "
           "height='9'>" +
           content + "</svg>";
}

inline QByteArray image(const QByteArray& href) {
    return svg("<image width='9' height='9' xlink:href='" + href + "'/>");
}

inline QByteArray pngBytes() {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImage pixels(2, 2, QImage::Format_ARGB32);
    pixels.fill(Qt::red);
    pixels.save(&buffer, "PNG");
    return bytes;
}

// A picture that claims 60,000 by 20,000 pixels.
inline QByteArray hugePng() {
    QByteArray bytes = pngBytes();
    bytes.replace(16, 8, QByteArray::fromHex("0000EA6000004E20"));
    const auto sum = crc32(0, reinterpret_cast<const Bytef*>(bytes.constData()) + 12, 17);
    for (int i = 0; i < 4; ++i) bytes[29 + i] = static_cast<char>(sum >> (24 - 8 * i));
    return bytes;
}

// Uses of uses, each doubling: 2^n elements.
inline QByteArray doubling(int n) {
    QByteArray content = "<rect id='a0' width='1' height='1'/>";
    for (int i = 1; i <= n; ++i) {
        const QByteArray use = "<use xlink:href='#a" + QByteArray::number(i - 1) + "'/>";
        content += "<g id='a" + QByteArray::number(i) + "'>" + use + use + "</g>";
    }
    return svg(content);
}

inline QByteArray chain(int n) {
    QByteArray content = "<rect id='a0' width='1' height='1'/>";
    for (int i = 1; i <= n; ++i)
        content +=
            "<use id='a" + QByteArray::number(i) + "' xlink:href='#a" + QByteArray::number(i - 1) + "'/>";
    return svg(content);
}

// The same with the last one first: each leads on to one that is not yet counted.
inline QByteArray chainFromItsEnd(int n) {
    QByteArray content;
    for (int i = n; i >= 1; --i)
        content +=
            "<use id='a" + QByteArray::number(i) + "' xlink:href='#a" + QByteArray::number(i - 1) + "'/>";
    return svg(content + "<rect id='a0' width='1' height='1'/>");
}

inline QByteArray nested(int n) {
    return svg(QByteArray("<g>").repeated(n) + QByteArray("</g>").repeated(n));
}

inline QByteArray attributes(int n) {
    QByteArray element = "<rect";
    for (int i = 0; i < n; ++i) element += " a" + QByteArray::number(i) + "='1'";
    return svg(element + "/>");
}

inline QByteArray stops(int n) {
    return svg("<linearGradient id='a'>" + QByteArray("<stop/>").repeated(n) + "</linearGradient>");
}

// A polyline of `n` lines across the drawing and a path of one, with such dashes.
inline QByteArray dashed(int n, const char* dashes) {
    QByteArray points;
    for (int i = 0; i <= n; ++i) points += i % 2 ? "100,50 " : "0,50 ";
    const QByteArray stroke =
        QByteArray(" stroke='red' fill='none' style='stroke-dasharray:") + dashes + "'/>";
    return "<svg xmlns='http://www.w3.org/2000/svg' width='100' height='100'><polyline points='" + points +
           "'" + stroke + "<path d='M0 0L100 0'" + stroke + "</svg>";
}

inline QByteArray scaled(QByteArray document, const QByteArray& attributes) {
    return document.replace("<polyline", "<polyline transform='scale(1000)' " + attributes);
}

inline QByteArray styled(int rules, int elements, const char* rule = "a{b:c}") {
    return svg("<style>" + QByteArray(rule).repeated(rules) + "</style>" +
               QByteArray("<g/>").repeated(elements));
}

inline QByteArray gzip(QByteArray bytes) {
    z_stream stream = {};
    deflateInit2(&stream, 1, Z_DEFLATED, MAX_WBITS + 16, 8, Z_DEFAULT_STRATEGY);
    QByteArray packed(static_cast<int>(deflateBound(&stream, static_cast<uLong>(bytes.size()))), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.truncate(static_cast<int>(stream.total_out));
    deflateEnd(&stream);
    return packed;
}

}  // namespace tzsvg
