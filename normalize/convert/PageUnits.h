// The units that a page is written in.
#pragma once

namespace tznormalize {

enum class PageUnits {
    kOwn,   // the author's
    kWhole  // the author's times a power of ten that makes width and height whole numbers, or nearly so: for
            // images [trap: an image shows whole units of its page; of 127.6 units 127 are shown, and all
            // that is drawn comes out larger by a two-hundredth]
};

}  // namespace tznormalize
