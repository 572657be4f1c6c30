// The element of one polygon: put together attribute by attribute, then saved as text. Used by the polygon
// writers, through the saver.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "svg/tree/KnownNames.h"

namespace tzsvg {

// Builds elements one after the other, without a tree: their values are kept as they are written, and the
// order of their attributes (svg/tree/SavedForm.h) is found once for each set of them.
class ElementBuilder {
  public:
    // Starts an element.
    void start(Element name);

    // Sets an attribute to a text in UTF-8. Each at most once, and in an order that is the same for all
    // elements.
    void set(Attribute name, std::string_view text);

    // Appends the element to the text, in UTF-8, without a line end.
    void save(std::string& text);

  private:
    struct Value {
        std::string bytes;
        std::string saved;  // name="value", with a blank before
    };
    struct Form {
        std::string opening;                // of the tag: <name
        std::vector<Attribute> attributes;  // in the order in which they are written
    };
    Form makeForm() const;

    // The last value of each attribute: a drawing has a few colours and widths, which come in runs.
    std::array<Value, kAttributeCount> values_;
    Element name_ = Element::kOther;
    std::vector<Attribute> set_;  // the attributes of the element
    uint64_t key_ = 0;            // a bit for each of them, and the name
    std::unordered_map<uint64_t, Form> forms_;
};

}  // namespace tzsvg
