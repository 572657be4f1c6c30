// See the header.
#include "import/PrimitiveTags.h"

#include <QGraphicsEllipseItem>
#include <array>
#include <string>

#include "import/SVGLoader.h"
#include "import/shape/ShapeItem.h"
#include "import/shape/ShapeNames.h"
#include "import/text/RealText.h"
#include "import/text/RoundTripNames.h"

namespace tzsvg {
namespace {

// The text as it grows. Numbers are as QTextStream prints them: six significant digits.
// PrimitiveTags/numbersAsStreamed pins that it is so.
class PrimitiveText {
  public:
    explicit PrimitiveText(const char* text) {
        constexpr size_t kUsual = 80;
        text_.reserve(kUsual);
        *this << text;
    }

    PrimitiveText& operator<<(const char* text) {
        text_ += text;
        return *this;
    }
    PrimitiveText& operator<<(double value) {
        std::array<char, kRealRoom> room;  // NOLINT(cppcoreguidelines-pro-type-member-init): written first
        if (const char* const end = writeReal(room.data(), value)) {
            text_.append(room.data(), static_cast<size_t>(end - room.data()));
        } else {
            text_ += realText(value);
        }
        return *this;
    }

    QString toString() const { return QString::fromLatin1(text_.data(), static_cast<int>(text_.size())); }

  private:
    std::string text_;
};

// A rectangle's numbers are of single precision, an ellipse's of double; meant so, PrimitiveTags/precision
// pins it.
double single(double value) {
    return static_cast<double>(static_cast<float>(value));
}

// The height stands before the width: stored drawings are so, readers go by the labels.
QString rectangleText(const QGraphicsRectItem& item) {
    const QRectF rect = item.rect();
    PrimitiveText text("RECT{X:");
    text << single(rect.x()) << ",Y:" << single(rect.y()) << ",HEIGHT:" << single(rect.height())
         << ",WIDTH:" << single(rect.width());
    if (const auto* const rounded = dynamic_cast<const QGraphicsItemRoundedRect*>(&item)) {
        text << ",RX:" << single(rounded->rx()) << ",RY:" << single(rounded->ry());
    }
    text << "}";
    return text.toString();
}

QString ellipseText(bool circle, const QGraphicsEllipseItem& item) {
    const QRectF rect = item.rect();
    PrimitiveText text(circle ? "CIRCLE{CX:" : "ELLIPSE{CX:");
    text << rect.x() + rect.width() * 0.5 << ",CY:" << rect.y() + rect.height() * 0.5;
    if (circle) {
        text << ",R:" << rect.width() * 0.5 << "}";
    } else {
        text << ",RX:" << rect.width() * 0.5 << ",RY:" << rect.height() * 0.5 << "}";
    }
    return text.toString();
}

}  // namespace

QString primitiveText(const QString& elementName, const QGraphicsItem& item) {
    const ShapeNames& n = shapeNames();
    if (elementName == n.rect) {
        const auto* const rect = dynamic_cast<const QGraphicsRectItem*>(&item);
        return rect ? rectangleText(*rect) : QString();
    }
    const bool circle = elementName == n.circle;
    if (circle || elementName == n.ellipse) {
        const auto* const ellipse = dynamic_cast<const QGraphicsEllipseItem*>(&item);
        return ellipse ? ellipseText(circle, *ellipse) : QString();
    }
    return elementName.toUpper();
}

bool writePrimitiveTags(SVGLoader& loader, const QDomNode& node, const QGraphicsItem& item) {
    if (!isShapeElement(node)) return false;
    const QString text = primitiveText(node.nodeName(), item);
    if (text.isEmpty()) return false;
    loader.tagLastPolygon(kTagPrimitive, text);
    loader.tagLastPolygon(kTagViewBoxCompare, "1");
    return true;
}

}  // namespace tzsvg
