// See the header.
#include "host/Log.h"

#include <utility>

#include "hostsdk/CTzError.h"

namespace tzhost {

void Log::setSink(LineSink sink) {
    const std::lock_guard lock(mutex_);
    sink_ = std::move(sink);
}

void Log::keepLines() {
    const std::lock_guard lock(mutex_);
    keepLines_ = true;
}

uint32_t Log::openEntry(LogEntry entry) {
    const std::lock_guard lock(mutex_);
    entries_.push_back(std::move(entry));
    return static_cast<uint32_t>(entries_.size() - 1);
}

void Log::append(uint32_t entry, std::string_view heading, std::string_view text) {
    const std::lock_guard lock(mutex_);
    if (entry >= entries_.size()) throw CTzError(kTzOutOfBounds);
    const bool ended = !text.empty() && text.back() == '\n';
    if (sink_) {
        sink_(text);
        if (!ended) sink_("\n");
    }
    if (keepLines_) {
        lines_.push_back({entry, std::string(heading), std::string(text)});
        if (!ended) lines_.back().text += '\n';
    }
}

std::vector<LogEntry> Log::entries() const {
    const std::lock_guard lock(mutex_);
    return entries_;
}

std::vector<LogLine> Log::lines() const {
    const std::lock_guard lock(mutex_);
    return lines_;
}

}  // namespace tzhost
