// One shape element on its way through builders, transforms and tags, which all ask it for attributes: most
// of them for ones that it has not. Made by the converters and by the measuring of the document.
#pragma once

#include <QDomElement>
#include <QString>
#include <cstdint>

namespace tzsvg {

// The attributes that the import knows.
enum class Attribute : uint8_t {
    kX,
    kY,
    kWidth,
    kHeight,
    kRx,
    kRy,
    kCx,
    kCy,
    kR,
    kX1,
    kY1,
    kX2,
    kY2,
    kPoints,
    kData,
    kTransform,
    kId,
    kStyle,
    kFill,
    kFillOpacity,
    kFillRule,
    kOpacity,
    kStrokeWidth,
    kStroke,
    kStrokeOpacity,
    kDashArray,
    kDashOffset,
    kLineCap,
    kLineJoin,
    kMiterLimit,
    kClipPath,
};

const QString& nameOf(Attribute attribute);

// Looking an attribute up in the toolkit's tree costs more than most else that is done for a shape. Once as
// many have been found as there are, the others are known to be absent.
class ShapeElement {
  public:
    // Implicit: a builder is given either.
    ShapeElement(const QDomElement& element)  // NOLINT(google-explicit-constructor)
        : element_(element), notFound_(element.attributes().count()) {}

    const QDomElement& element() const { return element_; }

    // As the toolkit answers: null when it is absent.
    QString attribute(Attribute attribute) const {
        return isKnownAbsent(attribute) ? QString() : lookUp(attribute);
    }
    bool has(Attribute attribute) const;

  private:
    static uint32_t bitOf(Attribute attribute) { return 1U << static_cast<uint32_t>(attribute); }
    bool isKnownAbsent(Attribute attribute) const {
        return notFound_ == 0 && (found_ & bitOf(attribute)) == 0;
    }
    QString lookUp(Attribute attribute) const;
    void noteFound(Attribute attribute) const;

    QDomElement element_;
    mutable int notFound_;  // how many attributes have not been asked for yet
    mutable uint32_t found_ = 0;
};

}  // namespace tzsvg
