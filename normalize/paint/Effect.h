// What a clip path, a mask or a filter comes to for one object.
#pragma once

#include <string>

namespace tznormalize {

enum class EffectKind {
    kNone,          // nothing to set
    kUrl,           // `url` is the attribute's value
    kDrawsNothing,  // the object is not drawn at all
};

struct Effect {
    EffectKind kind = EffectKind::kNone;
    std::string url;  // "url(#clip3)"

    // What could not be carried of it, for a note on the object; null when nothing.
    const char* leftOut = nullptr;
};

}  // namespace tznormalize
