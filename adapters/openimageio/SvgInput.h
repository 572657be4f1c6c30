// OpenImageIO's reader of drawings: hands its questions on to a TiledDrawing.
#pragma once

#include <OpenImageIO/imageio.h>

#include <memory>
#include <string>

#include "adapters/openimageio/TiledDrawing.h"

namespace tzoiio {

class SvgInput final : public OIIO::ImageInput {
  public:
    const char* format_name() const override { return "svg"; }
    bool valid_file(const std::string& name) const override;
    bool open(const std::string& name, OIIO::ImageSpec& spec) override;
    bool open(const std::string& name, OIIO::ImageSpec& spec, const OIIO::ImageSpec& config) override;
    bool close() override;
    int current_subimage() const override { return 0; }
    int current_miplevel() const override { return level_; }
    bool seek_subimage(int subimage, int miplevel) override;
    OIIO::ImageSpec spec(int subimage, int miplevel) override;
    OIIO::ImageSpec spec_dimensions(int subimage, int miplevel) override { return spec(subimage, miplevel); }
    bool read_native_scanline(int subimage, int miplevel, int y, int z, void* data) override;
    bool read_native_tile(int subimage, int miplevel, int x, int y, int z, void* data) override;

  private:
    bool has(int subimage, int miplevel) const;
    OIIO::ImageSpec specOf(int miplevel) const;

    // Shared with reads under way, which close() does not wait for.
    std::shared_ptr<const TiledDrawing> drawing_;
    OpenOptions options_;
    int level_ = 0;
};

}  // namespace tzoiio
