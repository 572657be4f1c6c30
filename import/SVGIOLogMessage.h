// The scene loader's log message: the lines by which a load tells how it goes through the document.
#pragma once

#include "hostsdk/CTzLogMessage.h"

namespace tzsvg {

class SVGIOLogMessage : public CTzLogMessage {
  public:
    explicit SVGIOLogMessage(CTzUser_Host host) : CTzLogMessage(std::move(host)) {}

    const char* formatName() const override { return "SVG IO"; }
    const char* version() const override { return "0.01a"; }
    const char* description() const override { return nullptr; }

    // Formats a line as printf does and adds it under "load/save". A line of more than 1023 bytes is cut
    // there, between two UTF-8 characters. Throws CTzError.
    void addFormattedLine(const char* format, ...) __attribute__((format(printf, 2, 3)));
};

}  // namespace tzsvg
