// The files and data that a document's `image` elements and style sheet instructions lead to, looked at as
// the renderer would open them. Used by DocumentGuard for one document.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "svg/guard/DocumentGuard.h"

class QImageReader;

namespace tzsvg {

class StyleCost;

class LinkedFiles {
  public:
    // A compressed document has no place of its own for the renderer: its links start at the current folder.
    LinkedFiles(const QString& documentName, bool compressed);

    // Whether the renderer may follow the "href" of an `image` element: to a raster image, or to nothing.
    Danger inspectImage(const QString& href);

    // The same for the text of an `xml-stylesheet` instruction. What they hold goes to `styles`.
    Danger inspectStyleSheet(const QString& instruction, StyleCost& styles);

    // The files in which there was no danger, there or not.
    const QStringList& files() const { return files_; }

  private:
    Danger inspectFile(const QString& path);
    Danger inspectData(QByteArray data);
    Danger inspectRaster(QImageReader& reader);

    QString folder_;  // empty: the current one
    QStringList files_;
    qint64 rasterBytes_ = 0;
};

}  // namespace tzsvg
