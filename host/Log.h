// The host's log: entries, and lines under headings within them. Filled through the log services; read by
// `--log` and by tests. May be used from any thread.
#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace tzhost {

struct LogEntry {
    std::string formatName;
    std::string version;
    std::string description;  // empty: none
    std::string subsystem;    // empty: the host's default
};

struct LogLine {
    uint32_t entry;
    std::string heading;
    std::string text;  // ends with a line end
};

class Log {
  public:
    using LineSink = std::function<void(std::string_view line)>;

    // Where the lines go, each with its line end: an import writes two for every node, so they are passed on
    // as they come. Without a sink and without keepLines() they are dropped.
    void setSink(LineSink sink);
    void keepLines();

    uint32_t openEntry(LogEntry entry);
    // Throws kTzOutOfBounds when there is no such entry.
    void append(uint32_t entry, std::string_view heading, std::string_view text);

    std::vector<LogEntry> entries() const;
    std::vector<LogLine> lines() const;

  private:
    mutable std::mutex mutex_;  // guards all below
    LineSink sink_;
    bool keepLines_ = false;
    std::vector<LogEntry> entries_;
    std::vector<LogLine> lines_;
};

}  // namespace tzhost
