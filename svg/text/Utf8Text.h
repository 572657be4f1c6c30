// UTF-8 of the toolkit's text, into a string that is used again: for tags, of which a document has millions.
#pragma once

#include <QStringView>
#include <string>

namespace tzsvg {

// The bytes that QString::toUtf8() gives.
inline void assignUtf8(std::string& bytes, QStringView text) {
    bytes.resize(static_cast<size_t>(text.size()));
    char* out = bytes.data();
    for (const QChar c : text) {
        if (c.unicode() >= 0x80) {
            const QByteArray converted = text.toUtf8();
            bytes.assign(converted.constData(), static_cast<size_t>(converted.size()));
            return;
        }
        *out++ = static_cast<char>(c.unicode());
    }
}

}  // namespace tzsvg
