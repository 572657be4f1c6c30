// The scene loader's log message: two lines for each node of the document that is walked.
#pragma once

#include <QString>
#include <string>

#include "hostsdk/CTzLogMessage.h"

namespace tzsvg {

class SVGIOLogMessage : public CTzLogMessage {
  public:
    explicit SVGIOLogMessage(CTzUser_Host host) : CTzLogMessage(std::move(host)) {}

    const char* formatName() const override { return "SVG IO"; }
    const char* version() const override { return "0.01a"; }
    const char* description() const override { return nullptr; }

    // Adds the line that stands before a node, under "load/save". A line of more than 1023 bytes is cut
    // there, between two UTF-8 characters. Throws CTzError. Most nodes have the line of the node before them,
    // which is not formatted again.
    void addNodeLine(const QString& name, int lineNumber);

  private:
    QString nodeName_;
    int nodeLineNumber_ = 0;
    std::string nodeLine_;  // empty before the first
};

}  // namespace tzsvg
