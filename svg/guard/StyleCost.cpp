#include "svg/guard/StyleCost.h"

namespace tzsvg {

void StyleCost::addSheet(QStringView text) {
    for (const QChar c : text) {
        if (inBraces_) {
            declarations_ += c == u';';
            inBraces_ = c != u'}';
        } else if (c == u'{') {
            ++selectors_;
            ++declarations_;
            inBraces_ = true;
            inSelector_ = afterBlank_ = false;
        } else if (c == u',') {
            ++selectors_;
            inSelector_ = afterBlank_ = false;
        } else if (c.isSpace()) {
            afterBlank_ = inSelector_;
        } else {
            strolls_ = strolls_ || c == u'+' || c == u'~';
            climbs_ = climbs_ || c == u'>' || afterBlank_;
            inSelector_ = true;
        }
    }
}

void StyleCost::addElement(int64_t ancestors, int64_t earlierSiblings) {
    ++elements_;
    ancestors_ += ancestors;
    earlierSiblings_ += earlierSiblings;
}

bool StyleCost::withinLimits() const {
    // In floating point: a document's counts multiply beyond 64 bits.
    const auto elements = static_cast<double>(elements_);
    const double steps = 4.0 * elements + (climbs_ ? static_cast<double>(ancestors_) : 0.0) +
                         (strolls_ ? static_cast<double>(earlierSiblings_) / 16.0 : 0.0);
    return static_cast<double>(selectors_) * steps + static_cast<double>(declarations_) * elements <=
           static_cast<double>(kMaxCost);
}

}  // namespace tzsvg
