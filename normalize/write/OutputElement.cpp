#include "normalize/write/OutputElement.h"

#include <cstring>
#include <iterator>

namespace tznormalize {

void OutputElement::set(const char* name, std::string value) {
    for (Attribute& one : attributes_) {
        if (std::strcmp(one.name, name) == 0) {
            one.value = std::move(value);
            return;
        }
    }
    constexpr size_t kUsual = 5;
    if (attributes_.empty()) attributes_.reserve(kUsual);
    attributes_.push_back({name, std::move(value)});
}

const std::string* OutputElement::value(const char* name) const {
    for (const Attribute& one : attributes_) {
        if (std::strcmp(one.name, name) == 0) return &one.value;
    }
    return nullptr;
}

size_t OutputElement::textSize() const {
    size_t size = 2 * std::strlen(name_) + text.size();
    for (const Attribute& one : attributes_) size += std::strlen(one.name) + one.value.size();
    for (const OutputElement& child : children_) size += child.textSize();
    return size;
}

void OutputElement::takeChildren(OutputElement& other) {
    children_.insert(children_.end(), std::make_move_iterator(other.children_.begin()),
                     std::make_move_iterator(other.children_.end()));
    other.children_.clear();
}

}  // namespace tznormalize
