// The image loader's log message: one text at a time, what the loader has to say of the file it looked at
// last.
#pragma once

#include <string>

#include "hostsdk/CTzLogMessage.h"

namespace tzsvg {

class SVGImageLoaderLogMessage : public CTzLogMessage {
  public:
    explicit SVGImageLoaderLogMessage(CTzUser_Host host) : CTzLogMessage(std::move(host), "io-status") {}

    const char* formatName() const override { return "SVG IO"; }
    const char* version() const override { return "0.01a"; }
    const char* description() const override { return nullptr; }

    void clear() noexcept { text_.clear(); }

    // Replaces the text and adds it to the host's log under "load/save". Throws CTzError.
    void setText(std::string_view text) {
        text_ = text;
        addLine(text_);
    }

    const std::string& text() const { return text_; }

  private:
    std::string text_;
};

}  // namespace tzsvg
