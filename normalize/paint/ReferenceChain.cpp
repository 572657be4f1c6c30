#include "normalize/paint/ReferenceChain.h"

#include <algorithm>

namespace tznormalize {

ReferenceChain::ReferenceChain(const SourceDocument& document, const SourceElement& first,
                               std::initializer_list<Tag> kinds) {
    for (const SourceElement* one = &first; one && elements_.size() < kMostLinks;
         one = document.target(*one)) {
        if (std::find(kinds.begin(), kinds.end(), one->tag()) == kinds.end()) break;
        if (std::find(elements_.begin(), elements_.end(), one) != elements_.end()) break;
        elements_.push_back(one);
    }
}

QStringView ReferenceChain::attribute(Name name) const {
    for (const SourceElement* const one : elements_) {
        if (const QStringView value = one->attribute(name); !value.isNull()) return value;
    }
    return {};
}

QStringView ReferenceChain::attribute(Name name, Tag kind) const {
    for (const SourceElement* const one : elements_) {
        if (one->tag() != kind) continue;
        if (const QStringView value = one->attribute(name); !value.isNull()) return value;
    }
    return {};
}

const SourceElement* ReferenceChain::firstWithChild(Tag kind) const {
    for (const SourceElement* const one : elements_) {
        for (const SourceElement* child = one->firstChild(); child; child = child->nextSibling()) {
            if (kind == Tag::kOther ? child->tag() != Tag::kForeign : child->tag() == kind) return one;
        }
    }
    return nullptr;
}

}  // namespace tznormalize
