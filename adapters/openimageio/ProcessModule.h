// The module as this process has it: loaded when the first drawing is opened, and kept as long as the process
// lives, since programs unload plug-ins while their caches still hold images.
#pragma once

#include <string>

#include "adapters/openimageio/OpenOptions.h"
#include "host/ImageLoading.h"
#include "host/io/FileState.h"

namespace tzoiio {

struct OpenedDrawing {
    std::string file;
    bool normalize;
    tzhost::FileState state;  // of the file, before it was read
    tzhost::LoadedImage image;
};

// Opens a drawing with the module that TZSVG_MODULE names, else with the one beside this plug-in, else with
// the installed one. Throws tzhost::OperationError. Callable from any thread.
OpenedDrawing openDrawing(const OpenOptions& options);

// Keeps a drawing for the next second: many programs open one for its size, close it, and open it again for
// its pixels. One that has changed by then is opened anew. Holds one drawing, until the next is opened or
// closed. Callable from any thread.
void closeUnread(OpenedDrawing drawing) noexcept;

}  // namespace tzoiio
