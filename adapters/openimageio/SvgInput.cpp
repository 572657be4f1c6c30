#include "adapters/openimageio/SvgInput.h"

#include <exception>

#include "adapters/openimageio/FirstBytes.h"

namespace tzoiio {
bool SvgInput::valid_file(const std::string& name) const {
    try {
        return looksLikeSvg(readFirstBytes(fileOf(name)));
    } catch (const std::exception&) {
        return false;
    }
}

bool SvgInput::open(const std::string& name, OIIO::ImageSpec& spec) {
    return open(name, spec, OIIO::ImageSpec());
}

bool SvgInput::open(const std::string& name, OIIO::ImageSpec& spec, const OIIO::ImageSpec& config) {
    close();
    try {
        options_ = readOpenOptions(name, config);
        // Qt is not started for a file of another kind.
        const std::string first = readFirstBytes(options_.file);
        if (first.empty()) {
            errorfmt("{}: cannot be read, or is empty", options_.file);
            return false;
        }
        if (!looksLikeSvg(first)) {
            errorfmt("{}: not an SVG document", options_.file);
            return false;
        }
        drawing_ = std::make_shared<const TiledDrawing>(options_);
    } catch (const std::invalid_argument& error) {
        errorfmt("{}: {}", fileOf(name), error.what());
        return false;
    } catch (const std::exception& error) {
        errorfmt("{}", error.what());
        return false;
    }
    level_ = 0;
    m_spec = specOf(0);
    spec = m_spec;
    return true;
}

bool SvgInput::close() {
    drawing_.reset();
    level_ = 0;
    m_spec = OIIO::ImageSpec();
    return true;
}

bool SvgInput::has(int subimage, int miplevel) const {
    return drawing_ && subimage == 0 && miplevel >= 0 && miplevel < drawing_->levelCount();
}

OIIO::ImageSpec SvgInput::specOf(int miplevel) const {
    const TzSize size = drawing_->levelSize(miplevel);
    OIIO::ImageSpec spec(static_cast<int>(size.width), static_cast<int>(size.height), 4,
                         OIIO::TypeDesc::UINT8);
    spec.tile_width = kTileSide;
    spec.tile_height = kTileSide;
    spec.attribute("oiio:ColorSpace", "sRGB");
    if (options_.unassociatedAlpha) spec.attribute("oiio:UnassociatedAlpha", 1);
    spec.attribute("svg:size", static_cast<int>(options_.size));
    spec.attribute("svg:normalize", options_.normalize ? 1 : 0);
    return spec;
}

bool SvgInput::seek_subimage(int subimage, int miplevel) {
    if (!has(subimage, miplevel)) return false;
    if (miplevel != level_) {
        m_spec = specOf(miplevel);
        level_ = miplevel;
    }
    return true;
}

OIIO::ImageSpec SvgInput::spec(int subimage, int miplevel) {
    const lock_guard held(*this);
    return has(subimage, miplevel) ? specOf(miplevel) : OIIO::ImageSpec();
}

bool SvgInput::read_native_scanline(int /*subimage*/, int /*miplevel*/, int /*y*/, int /*z*/,
                                    void* /*data*/) {
    errorfmt("drawings are read in tiles");
    return false;
}

bool SvgInput::read_native_tile(int subimage, int miplevel, int x, int y, int z, void* data) {
    std::shared_ptr<const TiledDrawing> drawing;
    bool unassociated = false;
    {
        const lock_guard held(*this);
        if (!has(subimage, miplevel)) {
            errorfmt("no such level: {}", miplevel);
            return false;
        }
        drawing = drawing_;
        unassociated = options_.unassociatedAlpha;
    }
    const TzSize size = drawing->levelSize(miplevel);
    const bool isTile = x >= 0 && y >= 0 && z == 0 && x % static_cast<int>(kTileSide) == 0 &&
                        y % static_cast<int>(kTileSide) == 0 && static_cast<uint32_t>(x) < size.width &&
                        static_cast<uint32_t>(y) < size.height;
    if (!isTile || !data) {
        errorfmt("no tile begins at {}, {}", x, y);
        return false;
    }
    auto* const pixels = static_cast<uint8_t*>(data);
    try {
        // Drawn with no lock held.
        drawing->readTile(miplevel, static_cast<uint32_t>(x), static_cast<uint32_t>(y), !unassociated,
                          pixels);
    } catch (const std::exception& error) {
        errorfmt("tile at {}, {} of level {}: {}", x, y, miplevel, error.what());
        return false;
    }
    return true;
}

}  // namespace tzoiio
