#include "adapters/openimageio/ProcessModule.h"

#include "host/ModuleLibrary.h"
#include "host/Refusal.h"
#include "host/core/Installed.h"

namespace tzoiio {
namespace {

// Never ended: caches of the program's may ask for tiles, and let go of images, until its last static object
// is gone.
const tzhost::Session& session() {
    static const auto* const kSession = new tzhost::Session(tzhost::defaultModule());
    return *kSession;
}

}  // namespace

tzhost::LoadedImage openDrawing(const OpenOptions& options) {
    const tzhost::Drawing drawing = options.normalize
                                        ? tzhost::Drawing::normalized(options.file, tzhost::Purpose::kImage)
                                        : tzhost::Drawing(options.file);
    return tzhost::explainingRefusal(drawing, tzhost::Purpose::kImage,
                                     [&] { return tzhost::loadImage(session().host, drawing); });
}

}  // namespace tzoiio
