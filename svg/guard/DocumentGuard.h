// The look at a document before a renderer gets it: whatever would make the renderer crash, hang or read what
// it must not is refused here. Called by loadDrawing(), the only place where renderers are loaded, and by the
// normalizer's check, which says why.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace tzsvg {

// Why a document must not go to a renderer.
enum class Danger {
    kNone,
    kFile,       // it cannot be read, or unpacks to more than kMaxUnpackedBytes
    kText,       // it is not well-formed, or beyond the limits of DocumentLimits.h
    kLinkedSvg,  // an `image` leads to another SVG, be it by file, by a file's content or by data URI: the
                 // renderer follows it without end when it leads back; raster images are allowed
    kRasters,    // these are more than kMaxRasterBytes in all
    kPipe,       // a link leads to a pipe or a device: reading it may wait for ever
    kUses,       // `use` elements beyond the limits of UseExpansion.h
    kStyles,     // style sheets beyond those of StyleCost.h, or one beside it of more than kMaxStyleBytes
    kStops,      // a gradient of more than kMaxGradientStops stops, which cost quadratic time
};

// A document that a renderer may load.
struct SafeDocument {
    QByteArray bytes;         // the XML of a compressed file; empty: the renderer reads the file
    QStringList linkedFiles;  // files besides the document that the renderer reads, there or not
};

// Nothing when there is a danger. What the document type declares outside is never fetched: neither Qt's
// reader nor its renderer does.
std::optional<SafeDocument> inspectDocument(const QString& fileName);

// A danger, and up to which character the text had been read when it was found; 0 when it is not of one
// place.
struct DangerousPlace {
    Danger danger = Danger::kNone;
    qint64 offset = 0;
};

// The danger in the XML of a document. Its links are followed from where the file of that name is.
DangerousPlace findDanger(const QByteArray& xml, const QString& fileName);

// The XML of a file, unpacked if its name says that it is compressed; nothing when it is not to be read.
std::optional<QByteArray> documentText(const QString& fileName);

constexpr qint64 kMaxRasterBytes = qint64{1} << 30;  // unpacked, at 4 bytes a pixel
constexpr int kMaxGradientStops = 4096;

// Of one path and of all together: image/DrawingCost.h counts them. The painter makes a path of its own of
// every dash, about 130 bytes each, so that a line across the page can ask for gigabytes.
constexpr qint64 kMaxDashesOfPath = qint64{1} << 20;
constexpr qint64 kMaxDashes = qint64{1} << 24;

constexpr qint64 kMaxStyleBytes = qint64{1} << 24;
constexpr qint64 kMaxUnpackedBytes = qint64{1} << 28;

}  // namespace tzsvg
