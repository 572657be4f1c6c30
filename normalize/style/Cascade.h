// The style sheets of a document matched against its elements, then asked element by element. Only as much of
// CSS as drawings use: type, class, id, attributes, child, descendant, siblings next to each other,
// :first-child and :root, lists, specificity, !important, @media other than print.
#pragma once

#include <QStringView>
#include <memory>

#include "normalize/Notes.h"
#include "normalize/document/SourceDocument.h"
#include "normalize/style/Style.h"
#include "normalize/text/Length.h"

namespace tznormalize {

// Asked from one thread: answers are kept.
class Cascade {
  public:
    // Notes what of the sheets it does not follow.
    Cascade(const SourceDocument& document, Notes& notes);
    ~Cascade();
    Cascade(const Cascade&) = delete;
    Cascade& operator=(const Cascade&) = delete;

    // What is declared for the element itself, by the last of: its attribute, sheets by specificity and
    // order, its style attribute, !important. A null view if nothing. May be "inherit" and the like.
    QStringView declared(const SourceElement& element, Property property) const;

    // The text of an attribute that sheets may set as well and then win: x, y, width, height, cx, cy, r, rx,
    // ry. A null view if neither is there.
    QStringView geometryValue(const SourceElement& element, Name name) const;

    // The values that hold for an element: declared ones over those of its parent that are inherited. Paints
    // and colours that cannot be read count as not declared; the font size is computed.
    Style computed(const SourceElement& element, const Style& parent, const Viewport& viewport) const;

    // The same with all ancestors, from the root on: for what is reached by a reference.
    Style computedFromRoot(const SourceElement& element) const;

  private:
    struct Rules;

    std::unique_ptr<Rules> rules_;
};

}  // namespace tznormalize
