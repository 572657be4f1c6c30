// Unpacking of compressed documents. Called by the image loader (DocumentGuard) and by normalize.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace tzsvg {

// Whether the renderer takes a file of that name for compressed: it goes by the name alone.
bool isCompressedName(const QString& fileName);

// Unpacks gzip data, all its members. Data that ends too early gives what could be unpacked, which is what
// the renderer would show: a file that lost only its last eight bytes, the checksum and the size, is a whole
// drawing. Nothing when the data is broken or unpacks to more than `limit` bytes.
std::optional<QByteArray> unpackGzip(const QByteArray& packed, qint64 limit);

}  // namespace tzsvg
