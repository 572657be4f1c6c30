// The module as this process has it: loaded when the first drawing is opened, and kept as long as the process
// lives, since programs unload plug-ins while their caches still hold images.
#pragma once

#include "adapters/openimageio/OpenOptions.h"
#include "host/ImageLoading.h"

namespace tzoiio {

// Opens a drawing with the module that TZSVG_MODULE names, else with the one beside this plug-in, else with
// the installed one. Throws tzhost::OperationError. Callable from any thread.
tzhost::LoadedImage openDrawing(const OpenOptions& options);

}  // namespace tzoiio
