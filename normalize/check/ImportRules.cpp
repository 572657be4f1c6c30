// In the order of a load: all shapes are measured, groups are numbered, shapes are converted.
#include "normalize/check/ImportRules.h"

#include <QVector3D>
#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_set>

#include "normalize/check/Faults.h"
#include "normalize/check/ImportedPoints.h"
#include "svg/shape/DocumentExtent.h"
#include "svg/shape/ElementTransform.h"
#include "svg/shape/ShapeItem.h"

namespace tznormalize {
namespace {

using tzsvg::Attribute;
using tzsvg::Element;
using tzsvg::XmlNode;

constexpr FindingRule kTooLow{"limit", "the page is scaled to a size that comes back"};
constexpr FindingRule kGroupPlace{"group-place", "groups stand where the import takes them"};

// Finds the first points that span a plane, as the export does: in single precision.
class PlaneSearch {
  public:
    bool isFound() const { return isFound_; }

    void add(const QPointF& point) {
        if (isFound_) return;
        const QVector3D at(static_cast<float>(point.x()), static_cast<float>(point.y()), 0.0F);
        if (count_ == 0) {
            first_ = at;
            count_ = 1;
        } else if (count_ == 1) {
            if (!((at - first_).length() > 0)) return;
            second_ = at;
            count_ = 2;
        } else {
            isFound_ = (at - first_).length() > 0 && (at - second_).length() > 0 &&
                       QVector3D::crossProduct(second_ - first_, at - first_).length() > 0;
        }
    }

  private:
    int count_ = 0;
    bool isFound_ = false;
    QVector3D first_;
    QVector3D second_;
};

// An element that is open, and the transform from its space to the document's.
struct Around {
    uint32_t element;
    QTransform matrix;
    bool isRead;  // all transforms up to here were
};

class ImportCheck {
  public:
    ImportCheck(const CheckedDocument& document, CheckReport& report)
        : document_(document), report_(report) {}

    ImportedGeometry check() {
        measureShapes();
        for (const CheckedElement& element : document_.elements()) {
            if (element.node->element() == Element::kSwitch) tzsvg::XmlDocument::dissolve(*element.node);
        }
        readRoot();
        checkGroups();
        convertShapes();
        return geometry_;
    }

  private:
    void refuse(uint32_t element, Attribute attribute, const Fault& fault) {
        report_.isImported = report_.isExported = false;
        document_.add(report_, FindingKind::kImportRefused, *fault.rule, element,
                      attribute == Attribute::kOther ? QStringView() : nameOf(attribute), fault.text);
    }

    // The attribute as it stands in the drawing; null when it is not known.
    QStringView written(uint32_t element, Name name) const {
        return document_.source() ? document_.source()->element(element).attribute(name) : QStringView();
    }

    Fault transformFault(uint32_t element) const {
        return faultOfTransform(document_.elements()[element].node->attribute(Attribute::kTransform),
                                written(element, Name::kTransform));
    }

    // All of them, definitions too: the first that cannot be measured refuses the document.
    void measureShapes() {
        const tzsvg::LengthContext lengths;
        for (uint32_t i = 0; i < document_.elements().size(); ++i) {
            const XmlNode& node = *document_.elements()[i].node;
            if (!node.isShape()) continue;
            tzsvg::ElementBounds bounds{};
            if (elementBounds(node, lengths, bounds)) {
                geometry_.flipHeight = std::max(geometry_.flipHeight, std::max(bounds.minY, bounds.maxY));
            } else {
                refuseShape(i, node);
            }
        }
        constexpr auto kLargest = static_cast<float>(std::numeric_limits<int>::max());
        const auto lowest = static_cast<float>(geometry_.flipHeight);
        if (lowest < kLargest) {
            geometry_.flipHeight = static_cast<int>(lowest);
            return;
        }
        geometry_.flipHeight = 0;
        report_.isImported = report_.isExported = false;
        CheckedDocument::add(report_, FindingKind::kImportRefused, kTooLow,
                             QStringLiteral("something lies lower than 2147483647 units"));
    }

    void refuseShape(uint32_t element, const XmlNode& node) {
        QTransform transform;
        if (!elementTransform(node, transform))
            refuse(element, Attribute::kTransform, transformFault(element));
        const bool isPath = node.element() == Element::kPath;
        if (!isPath && node.element() != Element::kPolygon && node.element() != Element::kPolyline) return;
        const Attribute attribute = isPath ? Attribute::kData : Attribute::kPoints;
        const QStringView text = node.attribute(attribute);
        if (tzsvg::createShapeItem(node, {})) return;
        if (!node.has(attribute)) {
            refuse(element, attribute,
                   {&kMissingValue, QStringLiteral("it has no \"%1\"").arg(nameOf(attribute))});
        } else if (isPath) {
            refuse(element, attribute, faultOfPathData(text, written(element, Name::kD)));
        } else {
            refuse(element, attribute, faultOfPoints(text, written(element, Name::kPoints)));
        }
    }

    void readRoot() {
        for (const CheckedElement& element : document_.elements()) {
            if (element.node->element() != Element::kSvg) continue;
            const XmlNode& root = *element.node;
            tzsvg::LengthContext& lengths = geometry_.lengths;
            const double width =
                parseLength(root.attribute(Attribute::kWidth), tzsvg::Axis::kHorizontal, lengths);
            const double height =
                parseLength(root.attribute(Attribute::kHeight), tzsvg::Axis::kVertical, lengths);
            if (width > 0 && height > 0) {
                lengths.setPercentReferences(width, height);
            } else {
                lengths.setPercentReferencesFromViewBox(root.attribute(Attribute::kViewBox));
            }
        }
    }

    void checkGroups() {
        for (uint32_t i = 0; i < document_.elements().size(); ++i) {
            const XmlNode& node = *document_.elements()[i].node;
            if (node.element() != Element::kGroup) continue;
            const XmlNode& parent = *node.parent();
            const Element place = parent.element();
            if (place == Element::kSvg || place == Element::kGroup || isContainerOfDefinitions(place))
                continue;
            refuse(i, Attribute::kOther,
                   {&kGroupPlace, QStringLiteral("a group directly in \"%1\"").arg(parent.name())});
        }
    }

    void convertShapes() {
        // The walk begins at the last node of the document, which is the root when nothing follows it.
        const XmlNode* const last = document_.tree().top().lastChild();
        if (last != document_.elements().front().node) return;
        PlaneSearch plane;
        std::vector<Around> around;
        for (uint32_t i = 0; i < document_.elements().size(); ++i) {
            const CheckedElement& element = document_.elements()[i];
            while (!around.empty() && around.back().element != element.parent) around.pop_back();
            Around own{i, {}, true};
            // Not that of a "switch", which is gone by now.
            if (element.node->element() != Element::kSwitch)
                own.isRead = elementTransform(*element.node, own.matrix);
            if (!around.empty()) {
                own.matrix *= around.back().matrix;
                own.isRead = own.isRead && around.back().isRead;
            }
            if (element.isWalked && element.node->isShape()) convertShape(own, plane);
            around.push_back(own);
        }
        geometry_.spansPlane = plane.isFound();
    }

    void convertShape(const Around& shape, PlaneSearch& plane) {
        if (!shape.isRead) {
            refuseAncestor(shape.element);
            return;
        }
        QTransform transform = shape.matrix;
        // As it is mapped there, in two steps.
        transform *= QTransform().scale(1, -1);
        transform *= QTransform().translate(0, geometry_.flipHeight);
        for (const QPointF& point :
             importedPoints(*document_.elements()[shape.element].node, geometry_.lengths)) {
            const QPointF at = transform.map(point);
            if (!std::isfinite(at.x()) || !std::isfinite(at.y())) {
                refuse(shape.element, Attribute::kOther,
                       {&kTooLow, QStringLiteral("a point too far away to be held")});
                return;
            }
            plane.add(at);
            addPoint(at);
        }
    }

    void addPoint(const QPointF& at) {
        if (geometry_.points++ == 0) {
            geometry_.left = geometry_.right = at.x();
            geometry_.top = geometry_.bottom = at.y();
        }
        geometry_.left = std::min(geometry_.left, at.x());
        geometry_.right = std::max(geometry_.right, at.x());
        geometry_.bottom = std::min(geometry_.bottom, at.y());
        geometry_.top = std::max(geometry_.top, at.y());
    }

    // An element around a shape whose transform is not read; said once for each.
    void refuseAncestor(uint32_t element) {
        while (element != document_.elements()[element].parent) {
            element = document_.elements()[element].parent;
            const XmlNode& node = *document_.elements()[element].node;
            QTransform transform;
            if (node.element() == Element::kSwitch || elementTransform(node, transform)) continue;
            if (refused_.insert(element).second)
                refuse(element, Attribute::kTransform, transformFault(element));
        }
    }

    const CheckedDocument& document_;
    CheckReport& report_;
    ImportedGeometry geometry_;
    std::unordered_set<uint32_t> refused_;
};

}  // namespace

ImportedGeometry checkImport(const CheckedDocument& document, CheckReport& report) {
    return ImportCheck(document, report).check();
}

}  // namespace tznormalize
