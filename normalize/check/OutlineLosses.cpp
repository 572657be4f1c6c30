#include "normalize/check/OutlineLosses.h"

#include <QGraphicsItem>
#include <cmath>

#include "normalize/check/Faults.h"
#include "normalize/text/Transform.h"
#include "svg/shape/ElementTransform.h"
#include "svg/shape/ShapeItem.h"

namespace tznormalize {
namespace {

using tzsvg::Attribute;
using tzsvg::XmlNode;

constexpr FindingRule kTransform{"transform", "transforms are baked into the coordinates"};

// The box of the outline, curves as they run.
std::optional<Box> importedBox(const XmlNode& node, const tzsvg::LengthContext& lengths) {
    const auto item = tzsvg::createShapeItem(node, lengths);
    if (!item) return std::nullopt;
    const auto* const path = dynamic_cast<const QGraphicsPathItem*>(item.get());
    const QRectF rect = path != nullptr ? path->path().boundingRect() : item->boundingRect();
    return Box{rect.left(), rect.top(), rect.right(), rect.bottom()};
}

bool isNear(const Box& one, const Box& other) {
    const double slack = 2e-3 * std::max({one.width(), one.height(), other.width(), other.height()}) + 1e-6;
    const auto near = [slack](double a, double b) { return std::abs(a - b) <= slack; };
    return near(one.left, other.left) && near(one.top, other.top) && near(one.right, other.right) &&
           near(one.bottom, other.bottom);
}

bool isNear(const Matrix& one, const QTransform& other) {
    const auto near = [](double a, double b) { return std::abs(a - b) <= 1e-6 * std::max(1.0, std::abs(a)); };
    return near(one.a, other.m11()) && near(one.b, other.m12()) && near(one.c, other.m21()) &&
           near(one.d, other.m22()) && near(one.e, other.dx()) && near(one.f, other.dy());
}

// Lengths of a basic shape that the import reads otherwise.
void checkLengths(const LossContext& context, const SourceElement& shape, const XmlNode& node,
                  const Style& style) {
    struct Length {
        Attribute attribute;
        Name name;
        Axis axis;
    };
    static constexpr Length kLengths[] = {{Attribute::kX, Name::kX, Axis::kHorizontal},
                                          {Attribute::kY, Name::kY, Axis::kVertical},
                                          {Attribute::kWidth, Name::kWidth, Axis::kHorizontal},
                                          {Attribute::kHeight, Name::kHeight, Axis::kVertical},
                                          {Attribute::kCx, Name::kCx, Axis::kHorizontal},
                                          {Attribute::kCy, Name::kCy, Axis::kVertical},
                                          {Attribute::kR, Name::kR, Axis::kNeither},
                                          {Attribute::kRx, Name::kRx, Axis::kHorizontal},
                                          {Attribute::kRy, Name::kRy, Axis::kVertical},
                                          {Attribute::kX1, Name::kX1, Axis::kHorizontal},
                                          {Attribute::kY1, Name::kY1, Axis::kVertical},
                                          {Attribute::kX2, Name::kX2, Axis::kHorizontal},
                                          {Attribute::kY2, Name::kY2, Axis::kVertical}};
    for (const Length& length : kLengths) {
        const auto property = propertyOf(length.name);
        const QStringView text =
            property ? context.cascade.geometryValue(shape, length.name) : shape.attribute(length.name);
        const auto meant = readLength(text, length.axis, context.viewport, style.fontSize());
        if (!meant) continue;
        const double read =
            parseLength(node.attribute(length.attribute),
                        length.axis == Axis::kVertical ? tzsvg::Axis::kVertical : tzsvg::Axis::kHorizontal,
                        context.geometry.lengths);
        if (std::abs(read - *meant) <= 1e-6 * std::max(1.0, std::abs(*meant))) continue;
        context.add(FindingKind::kChanged, kOtherValue, shape, textOf(length.name),
                    QStringLiteral("\"%1\" is read as %2").arg(text).arg(read));
    }
}

void checkTransform(const LossContext& context, const SourceElement& shape, const XmlNode& node) {
    const QStringView text = context.cascade.declared(shape, Property::kTransform);
    const Matrix meant = readTransform(text).value_or(Matrix());
    QTransform read;
    if (!elementTransform(node, read)) return;  // refused
    if (!isNear(meant, read)) {
        context.add(FindingKind::kChanged, kTransform, shape, u"transform",
                    QStringLiteral("\"%1\" is read otherwise").arg(text));
    } else if (!meant.isIdentity()) {
        context.add(FindingKind::kChanged, kTransform, shape, u"transform",
                    QStringLiteral("it is in the points that come back, and comes back itself"));
    }
}

}  // namespace

void checkOutline(const LossContext& context, const SourceElement& shape, const Style& style,
                  const Path& outline) {
    const XmlNode& node = *context.document.elements()[shape.index()].node;
    checkTransform(context, shape, node);
    const auto meant = outline.tightBox();
    const auto read = importedBox(node, context.geometry.lengths);
    if (!meant || !read) return;
    const bool isPath = shape.tag() == Tag::kPath;
    if (!isPath && shape.tag() != Tag::kPolygon && shape.tag() != Tag::kPolyline) {
        if (!isNear(*meant, *read)) checkLengths(context, shape, node, style);
        return;
    }
    const Name name = isPath ? Name::kD : Name::kPoints;
    const QStringView text = node.attribute(isPath ? Attribute::kData : Attribute::kPoints);
    if (const QString joined = joinedNumbers(text, shape.attribute(name)); !joined.isEmpty()) {
        context.add(FindingKind::kChanged, kJoinedNumbers, shape, textOf(name),
                    QStringLiteral("\"%1\" stand on two lines, and are read as one number").arg(joined));
    } else if (!isNear(*meant, *read)) {
        context.add(FindingKind::kChanged, kOtherValue, shape, textOf(name),
                    QStringLiteral("it is read otherwise than renderers read it"));
    }
}

bool endsWhereItBegan(const XmlNode& path) {
    QPainterPath read;
    if (!readPath(path, read) || read.isEmpty()) return false;
    int first = read.elementCount() - 1;
    while (first > 0 && !read.elementAt(first).isMoveTo()) --first;
    const QPointF begin = read.elementAt(first);
    const QPointF end = read.currentPosition();
    constexpr double kTolerance = 1e-12;  // the import's
    return std::abs(begin.x() - end.x()) <= kTolerance && std::abs(begin.y() - end.y()) <= kTolerance;
}

}  // namespace tznormalize
