// DrawingParts::of(): the one reading of a drawing's text. The text is known to be well-formed, so tags are
// found by their brackets and quotation marks alone.
#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "image/culling/CullingRules.h"
#include "image/culling/DrawingParts.h"

namespace tzsvg {
using Kind = DrawingPart::Kind;

// Reads the text once. What it finds is provisional until finish(): a part that something refers to by its
// ID is kept as a whole.
class PartScanner {
  public:
    explicit PartScanner(const QByteArray& xml) : xml_(xml.constData(), static_cast<size_t>(xml.size())) {
        result_.xml_ = xml;
    }

    std::optional<DrawingParts> scan() {
        if (!isProvenText(xml_) || xml_.find(DrawingParts::kMarkerDigits) != std::string_view::npos)
            return std::nullopt;
        while (result_.rootEnd_ == 0) {
            at_ = xml_.find('<', at_);
            if (at_ == std::string_view::npos || !readMarkup()) return std::nullopt;
        }
        finish();
        return std::move(result_);
    }

  private:
    struct Claim {
        uint32_t part;
        bool atStart;  // by the part's own tag, not by one inside
    };

    std::string_view rest() const { return xml_.substr(at_); }
    bool startsWith(std::string_view what) const { return xml_.compare(at_, what.size(), what) == 0; }

    bool skipPast(std::string_view end) {
        const size_t found = xml_.find(end, at_);
        if (found == std::string_view::npos) return false;
        at_ = found + end.size();
        return true;
    }

    bool readMarkup() {
        if (startsWith("<!--")) return skipPast("-->");
        if (startsWith("<![CDATA[")) return skipPast("]]>");
        if (startsWith("<?")) return skipPast("?>");
        if (startsWith("<!")) return skipDocumentType();
        const size_t begin = at_;
        if (!skipTag()) return false;
        const std::string_view tag = xml_.substr(begin, at_ - begin);
        if (startsWithSlash(tag)) return endElement(static_cast<uint32_t>(begin));
        return startElement(tag, static_cast<uint32_t>(begin));
    }

    static bool startsWithSlash(std::string_view tag) { return tag[1] == '/'; }

    bool skipTag() {
        char quote = '\0';
        for (; at_ < xml_.size(); ++at_) {
            const char c = xml_[at_];
            if (quote != '\0') {
                if (c == quote) quote = '\0';
            } else if (c == '"' || c == '\'') {
                quote = c;
            } else if (c == '>') {
                ++at_;
                return true;
            }
        }
        return false;
    }

    bool skipDocumentType() {
        const size_t subset = xml_.find_first_of("[>", at_);
        if (subset == std::string_view::npos) return false;
        if (xml_[subset] == '>') return skipPast(">");
        at_ = subset + 1;
        do {  // a declaration each; the subset's own end is "]" and the next ">"
            at_ = xml_.find_first_not_of(" \t\r\n", at_);
            if (at_ == std::string_view::npos) return false;
            if (xml_[at_] == ']') return skipPast(">");
        } while (skipTag());
        return false;
    }

    DrawingPart& part(uint32_t index) { return result_.parts_[index]; }
    uint32_t size() const { return static_cast<uint32_t>(result_.parts_.size()); }

    bool startElement(std::string_view tag, uint32_t begin) {
        const std::string_view name = nameOfTag(tag);
        const bool isWhole = endsWith(tag, "/>");
        if (!isProvenElement(name)) return false;
        if (name == "style" && !isWhole && !readStyleSheet()) return false;
        if (result_.rootInside_ == 0) return name == "svg" && !isWhole && beginRoot(tag, begin);
        if (depthInPart_ > 0) {
            if (isPainted(name) && !isInDefs()) isInOrder_ = false;
            const Kind kind = part(size() - 1).kind;
            const bool isShapePart = kind == Kind::kShape || kind == Kind::kEmpty;
            const bool fits =
                isShapePart ? depthInPart_ == 1 && (name == "title" || name == "desc") : name == "stop";
            if (!fits) part(size() - 1).kind = Kind::kKept;
            if (!isWhole) ++depthInPart_;
            return readAttributes(tag, size() - 1, false);
        }
        beginPart(name, tag, begin, isWhole);
        noteOrder(name, tag);
        return readAttributes(tag, size() - 1, true);
    }

    bool beginRoot(std::string_view tag, uint32_t begin) {
        result_.rootInside_ = static_cast<uint32_t>(at_);
        isInOrder_ = !mentionsTransform(tag);
        return isProvenProlog(xml_.substr(0, begin)) && readAttributes(tag, DrawingPart::kRoot, true);
    }

    void beginPart(std::string_view name, std::string_view tag, uint32_t begin, bool isWhole) {
        DrawingPart made;
        made.kind = kindOf(name, tag, isWhole);
        made.parent = open_.empty() ? DrawingPart::kRoot : open_.back();
        made.next = size() + 1;
        made.begin = begin;
        made.inside = made.outside = made.end = static_cast<uint32_t>(at_);
        if (made.kind == Kind::kGroup || made.kind == Kind::kDefs) {
            open_.push_back(size());
        } else if (!isWhole) {
            depthInPart_ = 1;
        }
        result_.parts_.push_back(made);
    }

    // For DrawingParts::isFilledInOrder().
    void noteOrder(std::string_view name, std::string_view tag) {
        if (part(size() - 1).kind == Kind::kShape) {
            ++shapesMade_;
            isInOrder_ = isInOrder_ && isPaintedFillFirst(name);
        } else if (part(size() - 1).kind != Kind::kEmpty && !isInDefs()) {
            isInOrder_ = isInOrder_ && !isPainted(name) && !mentionsTransform(tag);
        }
    }

    bool isInDefs() { return !open_.empty() && part(open_.back()).kind == Kind::kDefs; }

    Kind kindOf(std::string_view name, std::string_view tag, bool isWhole) {
        if (!staysWithinElement(tag)) return Kind::kKept;
        if (isInDefs())
            return name == "linearGradient" || name == "radialGradient" ? Kind::kPaint : Kind::kKept;
        if (name == "g" && !isWhole) return Kind::kGroup;
        if (name == "defs" && !isWhole) return Kind::kDefs;
        if (isEmptyRect(name, tag)) return Kind::kEmpty;
        return isShape(name) ? Kind::kShape : Kind::kKept;
    }

    bool endElement(uint32_t begin) {
        const auto end = static_cast<uint32_t>(at_);
        if (depthInPart_ > 0) {
            if (--depthInPart_ == 0) part(size() - 1).end = end;
        } else if (open_.empty()) {
            result_.rootOutside_ = begin;
            result_.rootEnd_ = end;
        } else {
            DrawingPart& group = part(open_.back());
            group.outside = begin;
            group.end = end;
            group.next = size();
            open_.pop_back();
        }
        return true;
    }

    // IDs, and what may be a reference to one.
    bool readAttributes(std::string_view tag, uint32_t index, bool atStart) {
        TagAttributes attributes(tag);
        while (attributes.next()) {
            const std::string_view name = attributes.name();
            const std::string_view value = attributes.value();
            if (!isPlainAttribute(name, value)) return false;
            if (name == "id" || name == "xml:id") {
                claims_.emplace(value, Claim{index, atStart});
            } else if (name == "href" || endsWith(name, ":href")) {
                // The renderer takes off the first character, whatever it is.
                if (!value.empty()) mentions_.emplace_back(index, value.substr(1));
                forEachName(value, [&](std::string_view id) { mentions_.emplace_back(index, id); });
            } else if (mentionsUrl(value)) {
                forEachName(value, [&](std::string_view id) { mentions_.emplace_back(index, id); });
            }
        }
        return true;
    }

    bool readStyleSheet() {
        const std::string_view css = rest().substr(0, rest().find("</"));
        if (mentionsUrl(css)) keepsPaints_ = true;
        if (mentionsTransform(css)) isInOrder_ = false;
        return isProvenStyleSheet(css);
    }

    void finish() {
        keepWhatIsReferredTo();
        const std::vector<uint32_t> places = dropInsides();
        findReferences(places);
        findAlways();
    }

    void keepWhatIsReferredTo() {
        std::unordered_set<std::string_view> mentioned;
        for (const auto& [from, id] : mentions_) mentioned.insert(id);
        for (const auto& [id, claim] : claims_) {
            if (!claim.atStart || claim.part == DrawingPart::kRoot) continue;
            DrawingPart& of = part(claim.part);
            const bool isPlain = std::all_of(id.begin(), id.end(), isNameCharacter);
            const bool isReferredTo = !isPlain || mentioned.count(id) != 0;
            // A gradient is taken by reference, if there is one gradient of its ID alone.
            if (of.kind == Kind::kPaint ? !isPlain || claims_.count(id) > 1 : isReferredTo)
                of.kind = Kind::kKept;
        }
        if (!keepsPaints_) return;
        for (DrawingPart& of : result_.parts_) {
            if (of.kind == Kind::kPaint) of.kind = Kind::kKept;
        }
    }

    // Takes out the parts inside kept ones. Returns where each part is now, or the one that it is inside of.
    std::vector<uint32_t> dropInsides() {
        std::vector<uint32_t> places(size());
        std::vector<DrawingPart> parts;
        for (uint32_t i = 0; i < size();) {
            const DrawingPart& of = part(i);
            const uint32_t next = of.kind == Kind::kKept ? of.next : i + 1;
            std::fill(places.begin() + i, places.begin() + next, static_cast<uint32_t>(parts.size()));
            parts.push_back(of);
            i = next;
        }
        for (DrawingPart& of : parts) {
            if (of.parent != DrawingPart::kRoot) of.parent = places[of.parent];
            of.next = of.next < size() ? places[of.next] : static_cast<uint32_t>(parts.size());
        }
        result_.parts_ = std::move(parts);
        return places;
    }

    void findReferences(const std::vector<uint32_t>& places) {
        std::unordered_map<std::string_view, uint32_t> paints;
        for (const auto& [id, claim] : claims_) {
            if (!claim.atStart || claim.part == DrawingPart::kRoot) continue;
            const uint32_t place = places[claim.part];
            if (part(place).kind == Kind::kPaint) paints.emplace(id, place);
        }
        for (const auto& [from, id] : mentions_) {
            const auto paint = paints.find(id);
            if (paint == paints.end()) continue;
            if (from == DrawingPart::kRoot) {
                always_.push_back(paint->second);
                continue;
            }
            DrawingPart& of = part(places[from]);
            if (of.firstReference == of.pastReferences)
                of.firstReference = static_cast<uint32_t>(result_.references_.size());
            result_.references_.push_back(paint->second);
            of.pastReferences = static_cast<uint32_t>(result_.references_.size());
        }
    }

    void findAlways() {
        for (uint32_t i = 0; i < size(); ++i) {
            if (part(i).kind == Kind::kKept) always_.push_back(i);
            if (part(i).kind == Kind::kShape) result_.shapes_.push_back(i);
        }
        result_.always_ = result_.with(always_);
        // A shape that is kept is painted between the others.
        result_.isFilledInOrder_ = isInOrder_ && shapesMade_ == result_.shapes_.size();
    }

    const std::string_view xml_;
    size_t at_ = 0;
    std::vector<uint32_t> open_;  // the groups that have not ended
    uint32_t depthInPart_ = 0;    // elements open inside the last part, itself included
    bool keepsPaints_ = false;
    bool isInOrder_ = true;
    size_t shapesMade_ = 0;  // parts that were shapes when they began
    std::unordered_multimap<std::string_view, Claim> claims_;
    std::vector<std::pair<uint32_t, std::string_view>> mentions_;  // by the part that mentions
    std::vector<uint32_t> always_;
    DrawingParts result_;
};

std::optional<DrawingParts> DrawingParts::of(const QByteArray& xml) {
    return PartScanner(xml).scan();
}

}  // namespace tzsvg
