#include "normalize/document/DocumentBytes.h"

#include <iconv.h>

#include <cerrno>

#include "svg/tree/DocumentText.h"
#include "svg/tree/GzipText.h"

namespace tznormalize {
namespace {

constexpr qint64 kMaxUnpacked = qint64{1} << 28;  // more than any drawing that somebody compressed

// What the XML declaration names as encoding; of UTF-16 without a mark, its name. Empty when nothing does.
QByteArray namedEncoding(const QByteArray& bytes) {
    if (bytes.startsWith(QByteArray("<\0", 2))) return "UTF-16LE";
    if (bytes.startsWith(QByteArray("\0<", 2))) return "UTF-16BE";
    if (!bytes.startsWith("<?xml")) return {};
    const QByteArray declaration = bytes.left(bytes.indexOf("?>"));
    const auto name = declaration.indexOf("encoding");
    if (name < 0) return {};
    auto from = name;
    while (from < declaration.size() && declaration.at(from) != '"' && declaration.at(from) != '\'') ++from;
    if (from == declaration.size()) return {};
    const auto to = declaration.indexOf(declaration.at(from), from + 1);
    return to < 0 ? QByteArray() : declaration.mid(from + 1, to - from - 1);
}

// What Qt decodes itself, in every version.
bool isQtsOwn(const QByteArray& encoding) {
    for (const char* own : {"utf-8", "utf8", "us-ascii", "ascii", "iso-8859-1", "latin1"}) {
        if (qstricmp(encoding.constData(), own) == 0) return true;
    }
    return encoding.isEmpty();
}

// Bytes of another encoding as UTF-8; null when the system does not know it.
QByteArray toUtf8(const QByteArray& bytes, const QByteArray& encoding) {
    const iconv_t converter = iconv_open("UTF-8", encoding.constData());
    if (converter == iconv_t(-1)) return {};  // NOLINT: what iconv_open() returns is a pointer or -1
    QByteArray input = bytes;                 // iconv wants its input writable
    char* in = input.data();
    auto inLeft = size_t(input.size());
    QByteArray utf8;
    QByteArray chunk(1 << 16, Qt::Uninitialized);
    while (inLeft > 0) {
        char* out = chunk.data();
        auto outLeft = size_t(chunk.size());
        const bool isStuck = iconv(converter, &in, &inLeft, &out, &outLeft) == size_t(-1) && errno != E2BIG;
        utf8.append(chunk.constData(), chunk.size() - decltype(chunk.size())(outLeft));
        if (isStuck) {
            utf8.append("\xEF\xBF\xBD");
            ++in;
            --inLeft;
        }
    }
    iconv_close(converter);
    return utf8;
}

}  // namespace

Reason textOfBytes(const QByteArray& bytes, QString& text) {
    QByteArray plain = bytes;
    if (bytes.startsWith("\x1f\x8b")) {
        const auto unpacked = tzsvg::unpackGzip(bytes, kMaxUnpacked);
        if (!unpacked) {
            return {Refusal::kUnreadable,
                    QStringLiteral("its gzip compression is broken, or hides more than 256 MiB")};
        }
        plain = *unpacked;
    }
    const QByteArray encoding = namedEncoding(plain);
    const QByteArray utf8 = isQtsOwn(encoding) ? QByteArray() : toUtf8(plain, encoding);
    text = utf8.isEmpty() ? tzsvg::decodeDocument(plain) : QString::fromUtf8(utf8);
    if (text.startsWith(QChar::ByteOrderMark)) text.remove(0, 1);
    return {};
}

}  // namespace tznormalize
