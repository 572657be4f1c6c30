// Clip paths, masks and patterns: Qt's renderer draws what stands in them. It draws a document of its own
// that holds what these may be made of and nothing else, so that no drawing leads it astray. Used by
// Preview.cpp and PreviewStyle.
#pragma once

#include <QBrush>
#include <QHash>
#include <QImage>
#include <QString>
#include <memory>

#include "host/preview/definitions/PreviewDefinitions.h"
#include "host/preview/definitions/PreviewGradients.h"

class QSvgRenderer;

namespace tzhost {

class PreviewPictures {
  public:
    explicit PreviewPictures(const PreviewDefinitions& definitions);
    ~PreviewPictures();

    bool hasClipPath(const QString& id) const;

    // What a clip path leaves of a layer, `part` of the picture. `toPicture` leads from the painter's
    // coordinates of the place to pixels. Everything is left when the drawing's coordinates are not known.
    QImage clipped(const QString& id, const PaintPlace& place, const QTransform& toPicture,
                   const QImage& layer, const QRect& part);

    // What a mask leaves of a layer in the same way: as much as its content is light.
    bool hasMask(const QString& id) const;
    QImage masked(const QString& id, const PaintPlace& place, const QTransform& toPicture,
                  const QImage& layer, const QRect& part);

    // A pattern as a brush that repeats it; no brush when there is none of that id, or no place known for it.
    // `pixels`: how many there are to a unit of the painter's coordinates.
    QBrush patternBrush(const QString& id, const PaintPlace& place, double pixels, double opacity);

  private:
    QImage content(int element, bool asClipPath, const QTransform& toPixels, const QRect& part);
    QSvgRenderer& renderer(int element, bool asClipPath);

    const PreviewDefinitions& definitions_;
    QHash<int, std::shared_ptr<QSvgRenderer>> renderers_;  // by element
};

}  // namespace tzhost
