// What a drawing is written for. What differs by it:
//
//                              kRoundTrip                          kImage
//     units of the page        the author's                        times a power of ten that makes width and
//                                                                  height whole numbers, or nearly so
//     shapes without a stroke  have one that is not seen           have none
//     the page's outline       comes first, not seen either        is left out
//     ids, classes, labels     stay on what is drawn               are left out
//
// [trap: an image shows whole units of its page; of 127.6 units 127 are shown, and all that is drawn comes
// out larger by a two-hundredth] The rest exists for the import and the export alone, and changes no pixel.
// It would make the text of an image half as long again, which is read several times before the first tile is
// drawn.
#pragma once

namespace tznormalize {

enum class WrittenFor {
    kRoundTrip,  // an import and an export
    kImage
};

}  // namespace tznormalize
