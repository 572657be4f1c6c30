// The gradients that a drawing's definitions hold, as brushes for a preview. Used by Preview.cpp.
#pragma once

#include <QBrush>
#include <QHash>
#include <QString>
#include <memory>
#include <string_view>

namespace tzhost {

// Reads linear and radial gradients with their stops out of a fragment of SVG, the text of a channel; text
// that does not parse gives none.
class PreviewGradients {
  public:
    explicit PreviewGradients(std::string_view definitions);

    // The gradient of that id, spanning the bounds of the shape that is painted with it; no brush when there
    // is none. A preview does not know the user space of the drawing: of a gradient in user space only the
    // direction is kept.
    QBrush brush(const QString& id) const;

  private:
    QHash<QString, std::shared_ptr<const QGradient>> gradients_;
};

}  // namespace tzhost
