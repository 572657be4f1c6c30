// An observer that keeps what it is told.
#pragma once

#include <string>
#include <vector>

#include "host/core/Observer.h"

namespace tzhost {

struct Recorder : Observer {
    void message(const std::string& text) override { messages.push_back(text); }
    void log(const LogLine& line) override {
        entries.push_back(line.entry);
        headings.emplace_back(line.heading);
        lines.emplace_back(line.text);
    }

    void clear() {
        messages.clear();
        entries.clear();
        headings.clear();
        lines.clear();
    }

    std::vector<std::string> messages;
    // Of the log, all of the same length.
    std::vector<LogEntry> entries;
    std::vector<std::string> headings;
    std::vector<std::string> lines;
};

}  // namespace tzhost
