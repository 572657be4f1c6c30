// What is written: elements with their attributes in the order in which they were set, and children. Made by
// convert, paint and content; turned into text at the end.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tznormalize {

class OutputElement {
  public:
    struct Attribute {
        const char* name;
        std::string value;
    };

    // Names are literals, or AttributeName::written of the source: they live as long as the element.
    explicit OutputElement(const char* name) : name_(name) {}

    const char* name() const { return name_; }

    // Sets or replaces an attribute. Values are UTF-8, not escaped.
    void set(const char* name, std::string value);

    // Null when there is none.
    const std::string* value(const char* name) const;
    bool has(const char* name) const { return value(name) != nullptr; }

    const std::vector<Attribute>& attributes() const { return attributes_; }

    std::vector<OutputElement>& children() { return children_; }
    const std::vector<OutputElement>& children() const { return children_; }

    OutputElement& append(OutputElement child) {
        children_.push_back(std::move(child));
        return children_.back();
    }

    // Moves all children of `other` behind the own ones.
    void takeChildren(OutputElement& other);

    // About how many characters it takes, with all that it holds.
    size_t textSize() const;

    // Text in front of the children, in UTF-8, not escaped.
    std::string text;

  private:
    const char* name_;
    std::vector<Attribute> attributes_;
    std::vector<OutputElement> children_;
};

}  // namespace tznormalize
