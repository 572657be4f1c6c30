// Estimates how long Qt's renderer would take over a document's style sheets: it compares every selector
// with every element, so that a small file can keep it busy for minutes. DocumentGuard hands over the sheets
// and the elements, and refuses a document that is over the limit. Pure.
#pragma once

#include <QStringView>
#include <cstdint>

namespace tzsvg {

class StyleCost {
  public:
    // A piece of a style sheet; a comment counts as if it were rules.
    void addSheet(QStringView text);

    // An element, by the number of its ancestors and of its earlier siblings.
    void addElement(int64_t ancestors, int64_t earlierSiblings);

    // Whether all selectors and declarations against all elements cost no more than kMaxCost.
    bool withinLimits() const;

    // A selector held against an element costs 4, and 1 for each ancestor or 16 earlier siblings that it may
    // look at; a declaration 1. Style sheets in which everything fits take about 0.15 us for each.
    static constexpr int64_t kMaxCost = int64_t{1} << 28;

  private:
    int64_t selectors_ = 0;
    int64_t declarations_ = 0;
    bool inBraces_ = false;
    bool inSelector_ = false;
    bool afterBlank_ = false;
    bool climbs_ = false;   // some selector looks at ancestors,
    bool strolls_ = false;  // or at earlier siblings

    int64_t elements_ = 0;
    int64_t ancestors_ = 0;
    int64_t earlierSiblings_ = 0;
};

}  // namespace tzsvg
