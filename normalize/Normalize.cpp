#include "normalize/Normalize.h"

#include "normalize/convert/Drawing.h"
#include "normalize/document/SourceDocument.h"
#include "normalize/style/Cascade.h"
#include "normalize/write/DocumentWriter.h"
#include "svg/tree/DocumentText.h"

namespace tznormalize {

Normalized normalize(const QByteArray& bytes, const QString& fileName, WrittenFor writtenFor) {
    Normalized result;
    SourceDocument source;
    result.refused = source.read(bytes);
    if (result.refused) return result;
    const Cascade styles(source, result.notes);
    const auto drawing = convertDrawing(source, styles, fileName, writtenFor, result.notes);
    if (!drawing) {
        result.refused = {Refusal::kTooManyElements,
                          QStringLiteral("its references make more than 200,000 elements or 64 MiB of it"), 0,
                          0};
        return result;
    }
    result.document = writeDocument(*drawing, source);
    return result;
}

Normalized normalizeFile(const QString& fileName, WrittenFor writtenFor) {
    QByteArray bytes;
    if (tzsvg::readFileBytes(fileName, bytes)) return normalize(bytes, fileName, writtenFor);
    Normalized result;
    result.refused = {Refusal::kUnreadable, QStringLiteral("it cannot be read, or is larger than 1 GiB"), 0,
                      0};
    return result;
}

}  // namespace tznormalize
