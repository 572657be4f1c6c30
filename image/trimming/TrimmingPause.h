// When outlines are trimmed again after that had to be given up (TrimmedPaint.h): what is near this tile is
// near its neighbours, too. Kept beside each renderer.
#pragma once

#include <algorithm>

namespace tzsvg {

class TrimmingPause {
  public:
    bool isOver() {
        if (tilesLeft_ == 0) return true;
        --tilesLeft_;
        return false;
    }
    void note(bool isDrawn) {
        constexpr unsigned kLongest = 16;
        next_ = isDrawn ? 1 : std::min(2 * next_, kLongest);
        tilesLeft_ = isDrawn ? 0 : next_;
    }

  private:
    unsigned next_ = 1;
    unsigned tilesLeft_ = 0;
};

}  // namespace tzsvg
