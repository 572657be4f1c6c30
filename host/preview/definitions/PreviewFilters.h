// The filters that a drawing's definitions hold, as far as shadows and soft edges need them: blur, offset,
// merge, flood, composite, blend, and what a matrix does to colours. Used by Preview.cpp.
#pragma once

#include <QImage>
#include <QString>
#include <QTransform>
#include <cstdint>

#include "host/preview/definitions/PreviewDefinitions.h"

namespace tzhost {

class PreviewFilters {
  public:
    explicit PreviewFilters(const PreviewDefinitions& definitions) : definitions_(definitions) {}

    // Whether there is a filter of that id that can be drawn: one of the steps above alone, in the drawing's
    // coordinates.
    bool canDraw(const QString& id) const;

    // How far around what is filtered its outcome may reach, in pixels. `toPixels` leads from the drawing's
    // coordinates to those of the picture.
    int reach(const QString& id, const QTransform& toPixels) const;

    // Filters a part of the picture, whose top left pixel is `at`. Unchanged where it would take too long, by
    // itself or after all that was filtered before.
    QImage filtered(const QString& id, const QImage& part, const QPoint& at, const QTransform& toPixels);

  private:
    const PreviewDefinitions& definitions_;
    int64_t worked_ = 0;  // pixels times steps
};

}  // namespace tzhost
