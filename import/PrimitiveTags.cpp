// See the header.
#include "import/PrimitiveTags.h"

#include <QGraphicsEllipseItem>

#include "import/SVGLoader.h"
#include "import/shape/ShapeItem.h"
#include "import/text/RoundTripNames.h"

namespace tzsvg {
namespace {

// As QTextStream prints a number: six significant digits. PrimitiveTags/numbersAsStreamed pins that it is so.
QString number(double value) {
    return QString::number(value, 'g', 6);
}

// A rectangle's numbers are of single precision, an ellipse's of double; meant so, PrimitiveTags/precision
// pins it.
QString single(double value) {
    return number(static_cast<double>(static_cast<float>(value)));
}

// The height stands before the width: stored drawings are so, readers go by the labels.
QString rectangleText(const QString& kind, const QGraphicsRectItem& item) {
    const QRectF rect = item.rect();
    QString text = kind + QStringLiteral("{X:") + single(rect.x()) + QStringLiteral(",Y:") +
                   single(rect.y()) + QStringLiteral(",HEIGHT:") + single(rect.height()) +
                   QStringLiteral(",WIDTH:") + single(rect.width());
    if (const auto* const rounded = dynamic_cast<const QGraphicsItemRoundedRect*>(&item)) {
        text +=
            QStringLiteral(",RX:") + single(rounded->rx()) + QStringLiteral(",RY:") + single(rounded->ry());
    }
    return text + u'}';
}

QString ellipseText(const QString& kind, bool circle, const QGraphicsEllipseItem& item) {
    const QRectF rect = item.rect();
    QString text = kind + QStringLiteral("{CX:") + number(rect.x() + rect.width() * 0.5) +
                   QStringLiteral(",CY:") + number(rect.y() + rect.height() * 0.5) + u',';
    if (circle) {
        text += QStringLiteral("R:") + number(rect.width() * 0.5);
    } else {
        text += QStringLiteral("RX:") + number(rect.width() * 0.5) + QStringLiteral(",RY:") +
                number(rect.height() * 0.5);
    }
    return text + u'}';
}

}  // namespace

QString primitiveText(const QString& elementName, const QGraphicsItem& item) {
    QString kind = elementName.toUpper();
    if (elementName == QLatin1String("rect")) {
        const auto* const rect = dynamic_cast<const QGraphicsRectItem*>(&item);
        return rect ? rectangleText(kind, *rect) : QString();
    }
    const bool circle = elementName == QLatin1String("circle");
    if (circle || elementName == QLatin1String("ellipse")) {
        const auto* const ellipse = dynamic_cast<const QGraphicsEllipseItem*>(&item);
        return ellipse ? ellipseText(kind, circle, *ellipse) : QString();
    }
    return kind;
}

bool writePrimitiveTags(SVGLoader& loader, const QDomNode& node, const QGraphicsItem& item) {
    if (!isShapeElement(node)) return false;
    const QString text = primitiveText(node.nodeName(), item);
    if (text.isEmpty()) return false;
    loader.tagLastPolygon(kTagPrimitive, text.toStdString());
    loader.tagLastPolygon(kTagViewBoxCompare, "1");
    return true;
}

}  // namespace tzsvg
