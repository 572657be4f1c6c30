// Gradients and patterns that take what they lack from others, by their href.
#pragma once

#include <initializer_list>
#include <vector>

#include "normalize/document/SourceDocument.h"

namespace tznormalize {

// An element and what it refers to, directly and through others, as far as these are of the given kinds.
// Bounded; a chain that leads back into itself ends there.
class ReferenceChain {
  public:
    static constexpr size_t kMostLinks = 32;

    ReferenceChain(const SourceDocument& document, const SourceElement& first,
                   std::initializer_list<Tag> kinds);

    // The attribute of the first that has it; a null view when none has. `kind` restricts it to elements of
    // one kind.
    QStringView attribute(Name name) const;
    QStringView attribute(Name name, Tag kind) const;

    // The first that has a child of a kind (of any, for kOther); null when none has.
    const SourceElement* firstWithChild(Tag kind) const;

  private:
    std::vector<const SourceElement*> elements_;
};

}  // namespace tznormalize
