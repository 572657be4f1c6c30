#include "normalize/convert/Conversion.h"

namespace tznormalize {

void Target::add(const Path& path, const Matrix& ctm) {
    if (isMeasured) {
        join(box, path.controlsBox(ctm));
    } else if (isCollecting > 0) {
        paths.push_back({path, ctm});
    }
}

}  // namespace tznormalize
