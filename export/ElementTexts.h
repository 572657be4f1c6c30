// The elements of all polygons as saved text, and the way back into the document: where a run of them
// belongs, the document has a placeholder element until it is saved itself.
#pragma once

#include <QDomDocument>
#include <QDomElement>
#include <cstdint>
#include <string>
#include <vector>

namespace tzsvg {

class ElementBuilder;

// Where one element's text is, with its line end.
struct ElementText {
    uint32_t chunk;
    uint32_t start;
    size_t size;
};

class ElementTexts {
  public:
    ElementTexts();

    // Saves an element.
    ElementText add(ElementBuilder& element);

    // An element that stands for a run of sibling elements; the run is not empty.
    QDomElement placeholder(std::vector<ElementText> run);

    // The whole document as text, in UTF-8, with the elements in the places of the placeholders.
    std::string save(const QDomDocument& document) const;

  private:
    QDomDocument factory_;  // what the placeholders are made of
    QString name_;          // of the placeholders, with the number of the run behind it
    // In pieces, which stay where they are: one text that grew would be copied, into fresh memory, as often
    // as it doubled.
    std::vector<std::string> chunks_;
    size_t size_ = 0;  // of all
    std::vector<std::vector<ElementText>> runs_;
};

}  // namespace tzsvg
