// The text is read in PartScanner.cpp.
#include "image/culling/DrawingParts.h"

#include <algorithm>
#include <string>

namespace tzsvg {

using Kind = DrawingPart::Kind;

// Adds a part, the groups around it, what all these refer to, and so on.
void DrawingParts::addAround(uint32_t part, std::vector<uint32_t>& parts) const {
    parts.push_back(part);
    for (size_t i = parts.size() - 1; i < parts.size(); ++i) {
        const DrawingPart& of = parts_[parts[i]];
        if (of.parent != DrawingPart::kRoot) parts.push_back(of.parent);
        for (uint32_t r = of.firstReference; r < of.pastReferences; ++r) {
            if (std::find(parts.begin(), parts.end(), references_[r]) == parts.end())
                parts.push_back(references_[r]);
        }
    }
}

std::vector<uint32_t> DrawingParts::with(const std::vector<uint32_t>& shapes) const {
    std::vector<uint32_t> taken = always_;
    std::vector<uint32_t> around;
    for (const uint32_t shape : shapes) {
        around.clear();
        addAround(shape, around);
        taken.insert(taken.end(), around.begin(), around.end());
    }
    std::sort(taken.begin(), taken.end());
    taken.erase(std::unique(taken.begin(), taken.end()), taken.end());
    return taken;
}

QByteArray DrawingParts::text(const std::vector<uint32_t>& parts, bool marked) const {
    std::string out(xml_.constData(), rootInside_);
    const auto append = [&](uint32_t begin, uint32_t end) {
        out.append(xml_.constData() + begin, end - begin);
    };
    const auto mark = [&](uint32_t index) {
        if (!marked) return;
        out.append("<path d=\"M").append(std::to_string(index)).append(" -").append(kMarkerDigits);
        out.append("V-9876542\"/>");
    };
    std::vector<uint32_t> open;
    const auto closeUpTo = [&](uint32_t part) {
        for (; !open.empty() && parts_[open.back()].next <= part; open.pop_back())
            append(parts_[open.back()].outside, parts_[open.back()].end);
    };
    mark(kNoPart);
    for (const uint32_t index : parts) {
        closeUpTo(index);
        const DrawingPart& of = parts_[index];
        const bool isGroup = of.kind == Kind::kGroup || of.kind == Kind::kDefs;
        const bool inDefs = of.parent != DrawingPart::kRoot && parts_[of.parent].kind == Kind::kDefs;
        if (!isGroup && !inDefs) mark(of.kind == Kind::kShape ? index : kNoPart);
        append(of.begin, isGroup ? of.inside : of.end);
        if (!isGroup) continue;
        open.push_back(index);
        if (of.kind == Kind::kGroup) mark(index);
    }
    closeUpTo(UINT32_MAX);
    append(rootOutside_, rootEnd_);
    return {out.data(), static_cast<int>(out.size())};
}

}  // namespace tzsvg
