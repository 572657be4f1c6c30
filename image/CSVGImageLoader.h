// The image loader server `SVG_ImageLoader`: recognises a file and says what image it would be, and on load
// makes the image object. It draws nothing itself.
#pragma once

#include "hostsdk/CTzImpl_Loader1.h"
#include "image/SVGImageLoaderLogMessage.h"

namespace tzsvg {

// The server of the image objects, brought along by the loader.
constexpr char kImageServerName[] = "svgImage";

class CSVGImageLoader : public CTzImpl_Loader1 {
  public:
    // Registers "svgImage" with the host, if no loader has done so yet.
    explicit CSVGImageLoader(const CTzPtr<ITzHost>& host);

    // What the loader says of the image: filled by recognition, read by the host and by the image.
    const TzImageTarget& target() const { return target_; }

  protected:
    TzResult recogniseFile(TzLoadAccess& access) override;
    CTzPtr<ITzImage> loadFile(const TzLoadAccess& access) override;

  private:
    CTzUser_Host host_;
    SVGImageLoaderLogMessage log_;
    TzImageTarget target_{kTzFormatRgbaFloat, 0, 0, 0};
};

}  // namespace tzsvg
