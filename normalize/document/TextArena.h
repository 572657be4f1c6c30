// Texts that views lead to.
#pragma once

#include <QStringView>
#include <algorithm>

#include "normalize/document/Arena.h"

namespace tznormalize {

class TextArena {
  public:
    // A copy that stays. Of an empty text a view that is empty but not null.
    QStringView keep(QStringView text) {
        if (text.isEmpty()) return u"";
        char16_t* const kept = characters_.make(size_t(text.size()));
        std::copy_n(text.utf16(), text.size(), kept);
        return {kept, text.size()};
    }

  private:
    Arena<char16_t> characters_;
};

}  // namespace tznormalize
