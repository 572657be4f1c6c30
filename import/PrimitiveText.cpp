#include "import/PrimitiveText.h"

#include <QGraphicsEllipseItem>
#include <algorithm>
#include <array>
#include <string_view>

#include "svg/shape/ShapeItem.h"
#include "svg/text/RealText.h"

namespace tzsvg {
namespace {

// The text as it grows. Numbers are as QTextStream prints them: six significant digits.
// RealText/equalsQt pins that it is so.
class PrimitiveText {
  public:
    explicit PrimitiveText(const char* text) { *this << text; }

    PrimitiveText& operator<<(std::string_view text) {
        std::copy(text.begin(), text.end(), room_.data() + used_);
        used_ += text.size();
        return *this;
    }
    PrimitiveText& operator<<(double value) {
        char* const start = room_.data() + used_;
        const char* const end = writeReal(start, value);
        if (!end) return *this << std::string_view(realText(value));
        used_ += static_cast<size_t>(end - start);
        return *this;
    }

    std::string toString() const { return {room_.data(), used_}; }

  private:
    // The kind and labels, and six numbers of at most kRealRoom characters.
    std::array<char, 64 + 6 * kRealRoom> room_;
    size_t used_ = 0;
};

// A rectangle's numbers are of single precision, an ellipse's of double; meant so, Tags/primitives pins it.
double single(double value) {
    return static_cast<double>(static_cast<float>(value));
}

// The height stands before the width, meant so: stored drawings are like this, and compared by their text.
// Tags/primitives pins it.
std::string rectangleText(const QGraphicsRectItem& item) {
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

std::string ellipseText(bool circle, const QGraphicsEllipseItem& item) {
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

std::string primitiveText(const XmlNode& element, const QGraphicsItem& item) {
    const Element name = element.element();
    switch (name) {
        case Element::kRect: {
            const auto* const rect = dynamic_cast<const QGraphicsRectItem*>(&item);
            return rect ? rectangleText(*rect) : std::string();
        }
        case Element::kCircle:
        case Element::kEllipse: {
            const auto* const ellipse = dynamic_cast<const QGraphicsEllipseItem*>(&item);
            return ellipse ? ellipseText(name == Element::kCircle, *ellipse) : std::string();
        }
        case Element::kLine:
            return "LINE";
        case Element::kPath:
            return "PATH";
        case Element::kPolygon:
            return "POLYGON";
        case Element::kPolyline:
            return "POLYLINE";
        default:
            return {};
    }
}

}  // namespace tzsvg
