// The look at a document before a renderer gets it: whatever would make the renderer crash, hang or read what
// it must not is refused here. Called by loadDrawing(), the only place where renderers are loaded.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace tzsvg {

// A document that a renderer may load.
struct SafeDocument {
    QByteArray bytes;         // the XML of a compressed file; empty: the renderer reads the file
    QStringList linkedFiles;  // files besides the document that the renderer reads, there or not
};

// Nothing when the file is no XML document or is refused:
//  - nested or attributed beyond the limits of DocumentLimits.h;
//  - an `image` that leads to another SVG, be it by file, by a file's content or by data URI: the renderer
//    follows it without end when it leads back; raster images are allowed, up to kMaxRasterBytes in all;
//  - `use` elements beyond the limits of UseExpansion.h, style sheets beyond those of StyleCost.h;
//  - a gradient of more than kMaxGradientStops stops, which cost quadratic time;
//  - a linked file that is no plain file (reading a pipe waits for ever), a style sheet beyond
//  kMaxStyleBytes;
//  - a compressed file (.svgz, .svg.gz) that unpacks to more than kMaxUnpackedBytes.
// What the document type declares outside is never fetched: neither Qt's reader nor its renderer
// does.
std::optional<SafeDocument> inspectDocument(const QString& fileName);

// The XML of a file, unpacked if its name says that it is compressed; nothing when it is not to be read.
std::optional<QByteArray> documentText(const QString& fileName);

constexpr qint64 kMaxRasterBytes = qint64{1} << 30;  // unpacked, at 4 bytes a pixel
constexpr int kMaxGradientStops = 4096;
constexpr qint64 kMaxStyleBytes = qint64{1} << 24;
constexpr qint64 kMaxUnpackedBytes = qint64{1} << 28;

}  // namespace tzsvg
