// The selectors that drawings use, and which elements they match.
#pragma once

#include <QStringView>
#include <cstdint>
#include <optional>
#include <vector>

#include "normalize/document/SourceElement.h"
#include "normalize/document/TextArena.h"

namespace tznormalize {

// The elements before their siblings; null for first children. By SourceElement::index().
using PreviousSiblings = std::vector<const SourceElement*>;

enum class AttributeMatch : uint8_t { kPresent, kEqual, kWord, kLanguage, kStart, kEnd, kContains };

struct AttributeTest {
    QStringView name;
    AttributeMatch match = AttributeMatch::kPresent;
    QStringView value;
};

enum class Combinator : uint8_t { kDescendant, kChild, kNext, kLater };

// What one element must be: "rect.wall#south[x]:first-child".
struct CompoundSelector {
    QStringView type;  // empty for any
    QStringView id;
    std::vector<QStringView> classes;
    std::vector<AttributeTest> attributes;
    bool isFirstChild = false;
    bool isRoot = false;
    Combinator toTheLeft = Combinator::kDescendant;  // how it relates to the compound before it
};

struct Selector {
    std::vector<CompoundSelector> compounds;  // from left to right
    uint32_t specificity = 0;                 // of all compounds: ids, classes and the like, types

    // Steps that a match has left in all; with none left nothing matches. Bounds what hostile sheets cost.
    using Budget = uint64_t;

    bool matches(const SourceElement& element, const PreviousSiblings& previous, Budget& budget) const;
};

// What became of a selector's text.
enum class SelectorKind {
    kRead,
    kNeverMatches,   // :hover, ::before and the like, which a still picture has none of
    kNotUnderstood,  // :not(), :nth-child() and whatever else
};

// Reads one selector, without commas around it. Names with escapes go to `texts`.
SelectorKind readSelector(QStringView text, Selector& selector, TextArena& texts);

}  // namespace tznormalize
