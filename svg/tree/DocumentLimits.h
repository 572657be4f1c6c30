// The limits on a document from outside, checked in one pass over its text before a tree or a renderer is
// built from it: Qt spends call stack on every level of nesting, and on the attributes of one element time
// that grows with the square of their number.
#pragma once

#include <QString>

namespace tzsvg {

constexpr int kMaxElementDepth = 256;  // the root counts as level 1
constexpr int kMaxAttributes = 4096;   // on one element

// Qt compares an element's attributes in pairs. Elements of more than kManyAttributes attributes may have
// this many pairs in all: that is eight elements of kMaxAttributes.
constexpr int kManyAttributes = 256;
constexpr qint64 kMaxAttributePairs = qint64{8} * kMaxAttributes * kMaxAttributes;

// How much longer entities and default attributes may make a text. Drawings that keep their styles in
// entities grow several times; a few kilobytes that grow to gigabytes are no drawing.
constexpr int kMaxExpansion = 16;                  // times the text
constexpr qint64 kMaxAddedText = qint64{1} << 20;  // and this many characters, for small documents
constexpr int kMaxReferences = 4096;               // to entities of the document, in one text or tag
constexpr int kMaxDeclarations = 4096;             // of entities and notations: Qt lists them slowly

enum class DocumentLimit {
    kNone,
    kDepth,
    kAttributes,
    kExpansion,  // by entities and default attributes
};

// The limit that a text passes: kDepth when an element is nested deeper than kMaxElementDepth, kAttributes
// when one has more attributes than kMaxAttributes, or all have more pairs than kMaxAttributePairs, entities
// and default attributes of an internal subset included; kExpansion when these make the text much longer. The
// answer is exact for well-formed text; for other text it may be any, but where it is kNone no reader builds
// a tree that is deeper. Linear in the text.
DocumentLimit limitPassed(const QString& xml);

// Whether it passes none.
inline bool withinLimits(const QString& xml) {
    return limitPassed(xml) == DocumentLimit::kNone;
}

}  // namespace tzsvg
