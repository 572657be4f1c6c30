// See the header. Used by the converters and the measuring of the document.
#include "import/shape/ElementTransform.h"

#include <QDomElement>

#include "import/text/TransformList.h"

namespace tzsvg {
namespace {

bool readTransform(const QString& text, QTransform& transform) {
    return text.isEmpty() || parseTransformList(text, transform);
}

}  // namespace

bool elementTransform(const QDomNode& node, QTransform& transform) {
    transform.reset();
    return !node.isElement() ||
           readTransform(node.toElement().attribute(nameOf(Attribute::kTransform)), transform);
}

bool elementTransform(const ShapeElement& element, QTransform& transform) {
    transform.reset();
    return readTransform(element.attribute(Attribute::kTransform), transform);
}

bool accumulatedTransform(const QDomNode& node, QTransform& transform) {
    if (!elementTransform(node, transform)) return false;
    for (QDomNode ancestor = node.parentNode(); !ancestor.isNull(); ancestor = ancestor.parentNode()) {
        QTransform own;
        if (!elementTransform(ancestor, own)) {
            transform.reset();
            return false;
        }
        if (own.type() != QTransform::TxNone) transform *= own;
    }
    return true;
}

void AncestorTransforms::push(const QDomNode& node) {
    Level level{{}, true, 0};
    level.parsed = elementTransform(node, level.own);
    if (!levels_.empty()) {
        const Level& above = levels_.back();
        const bool plain = above.parsed && above.own.type() == QTransform::TxNone;
        level.next = plain ? above.next : levels_.size();
    }
    levels_.push_back(level);
}

bool AncestorTransforms::addAncestors(QTransform& transform) const {
    for (size_t i = levels_.size(); i > 0; i = levels_[i - 1].next) {
        const Level& level = levels_[i - 1];
        if (!level.parsed) {
            transform.reset();
            return false;
        }
        if (level.own.type() != QTransform::TxNone) transform *= level.own;
    }
    return true;
}

}  // namespace tzsvg
