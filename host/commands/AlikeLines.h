// Lines about places in a file, of which many say the same: of those alike a few are told one by one, and
// then how many more there are. For notes and findings.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "host/core/Utf8.h"

namespace tzhost {

class AlikeLines {
  public:
    using Tell = std::function<void(const std::string& line)>;

    AlikeLines(std::string file, Tell tell) : file_(std::move(file)), tell_(std::move(tell)) {}

    // "map.svg:12:5: what"; without a place when the line is 0. Those of the same `kind` are alike.
    void add(int64_t line, int64_t column, const std::string& what, const std::string& kind) {
        if (++counts_[kind] > kMostAlike) return;
        const std::string place = line > 0 ? ":" + std::to_string(line) + ":" + std::to_string(column) : "";
        tell_(toOneLine(file_ + place + ": " + what, kLongest));
    }

    // What was not told one by one, and `more` things that are not known.
    void finish(uint64_t more) {
        for (const auto& [kind, count] : counts_) {
            if (count <= kMostAlike) continue;
            tell_(toOneLine(file_ + ": " + std::to_string(count - kMostAlike) + " more: " + kind, kLongest));
        }
        if (more > 0) tell_(file_ + ": " + std::to_string(more) + " more");
    }

  private:
    static constexpr uint64_t kMostAlike = 10;
    static constexpr size_t kLongest = 1000;

    const std::string file_;
    const Tell tell_;
    std::map<std::string, uint64_t> counts_;
};

}  // namespace tzhost
