// See the header.
#include "import/TagChain.h"

#include "import/GroupTags.h"
#include "import/PresentationTags.h"
#include "import/PrimitiveTags.h"
#include "import/SVGLoader.h"
#include "import/shape/ShapeItem.h"
#include "import/text/RoundTripNames.h"

namespace tzsvg {
namespace {

bool writeIdentityTags(SVGLoader& loader, const QDomElement& element) {
    static const QString kId = QStringLiteral("id");
    static const QString kTransform = QStringLiteral("transform");
    if (isShapeElement(element)) loader.tagLastPolygon(kTagElementId, element.attribute(kId).toStdString());
    loader.tagLastPolygon(kTagTransform, element.attribute(kTransform).toStdString());
    return true;
}

}  // namespace

bool writeTagChain(SVGLoader& loader, const QDomElement& element, const QGraphicsItem& item) {
    return ApplyFillStyleTags(loader, element) && ApplyStrokeStyleTags(loader, element) &&
           writePrimitiveTags(loader, element, item) && writeGroupTags(loader, element) &&
           writeIdentityTags(loader, element);
}

}  // namespace tzsvg
