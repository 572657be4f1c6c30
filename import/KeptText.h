// The limit on the text that one load may keep in tags and in the package's channels. What is kept of an
// element is repeated for each polygon made of it, each shape in a group and each level of nested
// definitions, so that a few kilobytes could ask for gigabytes. SVGLoader owns one and counts what it stores.
#pragma once

#include <QtGlobal>
#include <algorithm>

#include "hostsdk/CTzError.h"

namespace tzsvg {

class KeptText {
  public:
    // Ten thousand rectangles in columns of a hundred nested groups keep nine times their text.
    static constexpr qint64 kMostPerCharacter = 64;
    static constexpr qint64 kLeast = qint64{1} << 26;  // for small documents

    KeptText() = default;
    explicit KeptText(qint64 documentSize) : room_(std::max(kLeast, kMostPerCharacter * documentSize)) {}

    qint64 room() const { return room_; }

    // Takes room for a text; throws kTzOutOfMemory, which fails the load, when there is none.
    void take(size_t size) {
        room_ -= static_cast<qint64>(size);
        if (room_ < 0) throw CTzError(kTzOutOfMemory);
    }

  private:
    qint64 room_ = kLeast;
};

}  // namespace tzsvg
