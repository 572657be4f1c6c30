// The names that OpenImageIO asks a plug-in for.
#include "adapters/openimageio/SvgInput.h"

// NOLINTBEGIN(readability-identifier-naming)
OIIO_PLUGIN_EXPORTS_BEGIN

OIIO_EXPORT int svg_imageio_version = OIIO_PLUGIN_VERSION;

OIIO_EXPORT const char* svg_imageio_library_version() {
    return "tzsvg 1.0";
}

OIIO_EXPORT OIIO::ImageInput* svg_input_imageio_create() {
    return new tzoiio::SvgInput;  // OpenImageIO's to delete
}

OIIO_EXPORT const char* svg_input_extensions[] = {"svg", "svgz", nullptr};

OIIO_PLUGIN_EXPORTS_END
// NOLINTEND(readability-identifier-naming)
