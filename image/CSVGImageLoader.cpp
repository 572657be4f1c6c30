// The host comes here; from here it goes to CSVGImage.
#include "image/CSVGImageLoader.h"

#include <algorithm>

#include "hostsdk/CTzUser_Image.h"
#include "image/CSVGImage.h"
#include "image/RendererPool.h"
#include "svg/GuiApplication.h"

namespace tzsvg {
namespace {

QString fileNameOf(const TzLoadAccess& access) {
    constexpr uint64_t kMaxName = 1U << 16U;  // no system opens a longer one
    return QString::fromUtf8(access.fileName.data,
                             static_cast<int>(std::min(access.fileName.size, kMaxName)));
}

}  // namespace

CSVGImageLoader::CSVGImageLoader(const CTzPtr<ITzHost>& host) : host_(host), log_(host_) {
    const TzResult added = host_.service<ITzServerRegistry>()->addServer(tzText(kImageServerName),
                                                                         CSVGImage::factory(host).get());
    if (added != kTzExists) tzCheck(added);  // each loader brings it, the first one's stays
}

TzResult CSVGImageLoader::recogniseFile(TzLoadAccess& access) {
    log_.clear();
    if (!ensureGuiApplication()) {
        log_.setText("No GUI application to draw svg documents with.");
        return kTzNotSupported;
    }
    const auto renderer = loadDrawing(fileNameOf(access)).renderer;
    const QSize size = renderer ? renderer->defaultSize() : QSize();
    if (size.isEmpty()) {
        log_.setText("Invalid svg document.");
        return kTzFailed;
    }
    // The file's own size, although the image will be as large as its finest level. Meant so: the host lays
    // the picture out by the one and samples the other. ImageTest/recognise and levelsOfBothInterfaces pin
    // them.
    target_ = {kTzFormatRgbaFloat, static_cast<uint32_t>(size.width()), static_cast<uint32_t>(size.height()),
               0};
    const CTzUser_TypeService types(host_.service<ITzTypeService>());
    access.targetType = types.typeCode("image");
    access.flags = kTzLoadOneStep;
    access.target = &target_;
    access.formatName = tzText("SVG");
    return kTzOk;
}

CTzPtr<ITzImage> CSVGImageLoader::loadFile(const TzLoadAccess& access) {
    void* spawned = nullptr;
    const TzResult result =
        host_.service<ITzServerRegistry>()->spawn(tzText(kImageServerName), ITzImage::kId, &spawned);
    if (tzFailed(result)) throw CTzError(kTzFailed);  // one code, whatever the host had against it
    CTzPtr<ITzImage> image = CTzPtr<ITzImage>::adopt(static_cast<ITzImage*>(spawned));
    CSVGImage* const made = CSVGImage::ofThisModule(image.get());
    if (!made) throw CTzError(kTzFailed);
    made->initialise(*this, fileNameOf(access));
    return image;
}

}  // namespace tzsvg
