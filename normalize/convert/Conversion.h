// The state of one conversion, which the walk (convert), the paints (paint) and what is no shape (content)
// share, and what they hand each other: where an element stands, and what is being written into.
#pragma once

#include <QString>
#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "normalize/Notes.h"
#include "normalize/content/Fonts.h"
#include "normalize/convert/WrittenFor.h"
#include "normalize/document/SourceDocument.h"
#include "normalize/geometry/Matrix.h"
#include "normalize/geometry/Path.h"
#include "normalize/paint/PlacedPaths.h"
#include "normalize/style/Cascade.h"
#include "normalize/text/Length.h"
#include "normalize/write/Definitions.h"
#include "normalize/write/Grid.h"

namespace tznormalize {

// Elements that are being expanded: what a `use`, a pattern, a clip path, a mask or a marker leads to while
// its content is converted. A reference back to one of them is a cycle and leads nowhere.
class VisitedElements {
  public:
    // References within references; deeper ones are not followed.
    static constexpr size_t kMostNested = 60;

    bool contains(const SourceElement& element) const { return elements_.count(element.index()) != 0; }
    bool isEmpty() const { return elements_.empty(); }

    // Whether the content of `element` may be converted now: neither a cycle nor too deep.
    bool mayEnter(const SourceElement& element) const {
        return elements_.size() < kMostNested && !contains(element);
    }

  private:
    friend class Visit;
    std::unordered_set<uint32_t> elements_;
};

// Marks an element as being expanded for as long as it lives.
class Visit {
  public:
    Visit(VisitedElements& visited, const SourceElement& element)
        : visited_(visited), index_(element.index()), isFirst_(visited.elements_.insert(index_).second) {}
    ~Visit() {
        if (isFirst_) visited_.elements_.erase(index_);
    }
    Visit(const Visit&) = delete;
    Visit& operator=(const Visit&) = delete;

  private:
    VisitedElements& visited_;
    uint32_t index_;
    bool isFirst_;
};

// How many elements are converted, each counted as often as a reference leads to it, and how much text comes
// of it: a few nested `use` elements can ask for billions, as can long paths and gradients that many shapes
// refer to.
class ElementBudget {
  public:
    // For what references multiply; the document's own elements come on top.
    static constexpr size_t kMostExpanded = 200'000;

    // Text beyond what the document's own becomes: coordinates get absolute and lines curves.
    static constexpr size_t kMostTextAdded = size_t{64} << 20;
    static constexpr size_t kMostTextGrowth = 32;

    explicit ElementBudget(const SourceDocument& document)
        : left_(document.elementCount() + kMostExpanded),
          textLeft_(document.textSize() * kMostTextGrowth + kMostTextAdded) {}

    // Counts one element; false when there were too many, and from then on.
    bool spend() {
        if (left_ == 0) return false;
        --left_;
        return left_ != 0;
    }
    bool isSpent() const { return left_ == 0; }

    // Counts characters that are written, or points that are looked at; with too many nothing is left.
    void spendText(size_t characters) {
        if (characters > textLeft_) left_ = 0;
        textLeft_ -= std::min(characters, textLeft_);
    }

  private:
    size_t left_;
    size_t textLeft_;
};

struct Place;

// Where a shape stands whose markers are being drawn: "context-fill" and "context-stroke" in them are its
// paints.
struct MarkedShape {
    const Place& place;
    const MarkedShape* outer;  // a marker may have shapes with markers
};

struct Conversion {
    Conversion(const SourceDocument& document, const Cascade& cascade, const QString& file,
               Notes& notesToFill, const Box& pageOfResult, const Matrix& toPage, const Grid& pageGrid)
        : source(document),
          styles(cascade),
          fileName(file),
          notes(notesToFill),
          page(pageOfResult),
          base(toPage),
          grid(pageGrid),
          definitions(document),
          budget(document) {}

    const SourceDocument& source;
    const Cascade& styles;
    QString fileName;  // of the drawing; may be empty
    Notes& notes;
    Box page;     // of the result: what a viewer of the original sees
    Matrix base;  // from the root's user space to the page
    Grid grid;
    WrittenFor writtenFor = WrittenFor::kRoundTrip;
    double pixel = 1.0;  // of a screen, in page units: what strokes that do not scale are measured in
    Definitions definitions;
    VisitedElements visited;
    ElementBudget budget;
    const MarkedShape* marked = nullptr;
    Fonts fonts;
    size_t letters = 0;        // laid out so far: content/TextOutlines.cpp
    size_t pictureBytes = 0;   // written so far: content/EmbeddedPicture.h
    std::optional<Box> drawn;  // everything drawn, control points included, strokes not
    bool reachesOverPage = false;
    bool mayBeLifted = false;  // all is converted again, further down, if something is drawn above 0
    int nesting = 0;           // see Nesting

    // Whether nothing of it will be kept: only how far up it reaches still matters.
    bool isToBeLifted() const { return mayBeLifted && drawn && drawn->top < 0.0; }

    // Whether what is drawn keeps its id, class and label.
    bool keepsNames() const { return writtenFor == WrittenFor::kRoundTrip; }

    // What of the clip paths that groups have is known already, by clip path and matrix: see boxOfClip.
    std::unordered_map<std::string, std::optional<Box>> clipBoxes;
};

// Lives while an element is converted: bounds how deep elements are nested, references included, for the sake
// of the call stack.
class Nesting {
  public:
    static constexpr int kDeepest = 300;

    explicit Nesting(Conversion& conversion) : nesting_(conversion.nesting) { ++nesting_; }
    ~Nesting() { --nesting_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

    bool isTooDeep() const { return nesting_ > kDeepest; }

  private:
    int& nesting_;
};

// One note on `element`, where it stands in the source.
inline void addNote(Conversion& conversion, NoteCode code, const SourceElement& element, const QString& text,
                    const char* attribute = "") {
    conversion.notes.add(code, element, text, QLatin1String(attribute));
}

// Where an element stands. Copied downwards; `ctm` leads from the element's user space to the page and
// includes its own transform, `style` is its own computed style.
struct Place {
    Matrix ctm;
    Style style;
    Viewport viewport;  // of the nearest svg element or view box, for percentages
};

// What is being written into.
struct Target {
    bool isDrawn = false;        // the drawing itself, not a definition
    bool isClip = false;         // a clip path: only areas count in it
    bool isMeasured = false;     // nothing is written; only `box` is wanted
    bool countsStrokes = false;  // and the box is to have the strokes in it

    // The outlines of what was written, kept only while somebody asks for boxes of groups: see isCollecting.
    std::vector<PlacedPath> paths;
    int isCollecting = 0;

    std::optional<Box> box;  // when measured: of all control points, in the space of the result

    int depth = 0;           // of groups around
    int filters = 0;         // how many of these have a filter, whose result may reach elsewhere
    std::vector<Box> clips;  // upright boxes in page space outside of which nothing is seen, innermost last

    // Tells of an outline that was written, or would be; `ctm` maps it to the page.
    void add(const Path& path, const Matrix& ctm);
};

}  // namespace tznormalize
