#include "svg/shape/ElementTransform.h"

#include "svg/text/TransformList.h"

namespace tzsvg {

bool elementTransform(const XmlNode& node, QTransform& transform) {
    transform.reset();
    const QStringView text = node.attribute(Attribute::kTransform);
    return text.isEmpty() || parseTransformList(text, transform);
}

bool accumulatedTransform(const XmlNode& node, QTransform& transform) {
    if (!elementTransform(node, transform)) return false;
    for (const XmlNode* ancestor = node.parent(); ancestor; ancestor = ancestor->parent()) {
        QTransform own;
        if (!elementTransform(*ancestor, own)) {
            transform.reset();
            return false;
        }
        if (own.type() != QTransform::TxNone) transform = transform * own;
    }
    return true;
}

void AncestorTransforms::push(const XmlNode& node) {
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
        if (level.own.type() != QTransform::TxNone) transform = transform * level.own;
    }
    return true;
}

}  // namespace tzsvg
