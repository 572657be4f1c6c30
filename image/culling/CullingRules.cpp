#include "image/culling/CullingRules.h"

#include <QtGlobal>
#include <algorithm>
#include <array>
#include <cstring>
#include <string>

namespace tzsvg {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

template <size_t N>
bool isOneOf(std::string_view name, const std::array<std::string_view, N>& names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// The first such character from a place on; the text's size when there is none. find_first_of() takes several
// times as long for a few characters.
template <class Is>
size_t indexOf(std::string_view text, size_t from, Is is) {
    return static_cast<size_t>(std::find_if(text.begin() + static_cast<ptrdiff_t>(from), text.end(), is) -
                               text.begin());
}

bool contains(std::string_view text, std::string_view what) {
    return text.find(what) != std::string_view::npos;
}

// The predefined references stand for a character each, which means the same wherever it is.
bool hasOtherReference(std::string_view text) {
    static constexpr std::array<std::string_view, 5> kPredefined = {"amp;", "lt;", "gt;", "quot;", "apos;"};
    for (size_t at = text.find('&'); at != std::string_view::npos; at = text.find('&', at + 1)) {
        const std::string_view rest = text.substr(at + 1);
        const bool known = std::any_of(kPredefined.begin(), kPredefined.end(), [&](std::string_view name) {
            return rest.substr(0, name.size()) == name;
        });
        if (!known) return true;
    }
    return false;
}

// Nothing but entities for texts without tags and references.
bool isProvenSubset(std::string_view subset) {
    if (contains(subset, "<!ATTLIST") || contains(subset, "<!--") || contains(subset, "<?")) return false;
    char quote = '\0';
    for (const char c : subset) {
        if (c == '%' || c == '&' || (quote != '\0' && c == '<')) return false;
        if (quote == '\0' && (c == '"' || c == '\'')) {
            quote = c;
        } else if (c == quote) {
            quote = '\0';
        }
    }
    return true;
}

bool isUtf8Name(std::string_view name) {
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 'a' - 'A') : c; });
    return lower == "utf-8" || lower == "us-ascii";
}

bool isSelectorCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::strchr("_-.#*,> \t\r\n", c) != nullptr;
}

}  // namespace

bool isProvenRenderer() {
    const std::string_view version = qVersion();
    return version.substr(0, 5) == "5.15." || version.substr(0, 4) == "6.4.";
}

bool isProvenProlog(std::string_view prolog) {
    if (prolog.substr(0, 2) == "\xFE\xFF" || prolog.substr(0, 2) == "\xFF\xFE" || contains(prolog, {"\0", 1}))
        return false;
    if (const size_t declaration = prolog.find("<?xml"); declaration != std::string_view::npos) {
        const std::string_view tag = prolog.substr(declaration, prolog.find("?>", declaration) - declaration);
        TagAttributes settings(tag.substr(1));
        while (settings.next()) {
            if (settings.name() == "encoding" && !isUtf8Name(settings.value())) return false;
        }
    }
    const size_t type = prolog.find("<!DOCTYPE");
    if (type == std::string_view::npos) return true;
    const size_t subset = prolog.find('[', type);
    return subset == std::string_view::npos ||
           isProvenSubset(prolog.substr(subset, prolog.rfind(']') - subset));
}

bool isProvenStyleSheet(std::string_view css) {
    constexpr std::string_view kOpen = "<![CDATA[";
    constexpr std::string_view kClose = "]]>";
    css = css.substr(std::min(css.size(), css.find_first_not_of(kBlanks)));
    css = css.substr(0, css.find_last_not_of(kBlanks) + 1);
    if (css.substr(0, kOpen.size()) == kOpen && endsWith(css, kClose))
        css = css.substr(kOpen.size(), css.size() - kOpen.size() - kClose.size());
    if (contains(css, "visibility") || contains(css, "<!") || contains(css, "]]>")) return false;
    bool inBraces = false;
    for (size_t i = 0; i < css.size(); ++i) {
        const char c = css[i];
        if (c == '\\' || c == '&' || c == '@') return false;
        if (css.substr(i, 2) == "/*") {
            i = css.find("*/", i + 2);
            if (i == std::string_view::npos) return false;
            ++i;
        } else if (inBraces) {
            if (c == '{') return false;
            inBraces = c != '}';
        } else if (c == '{') {
            inBraces = true;
        } else if (!isSelectorCharacter(c)) {
            return false;
        }
    }
    return !inBraces;
}

bool isProvenElement(std::string_view name) {
    static constexpr std::array<std::string_view, 5> kUnproven = {"set", "script", "image", "animation",
                                                                  "handler"};
    return name.substr(0, 7) != "animate" && !isOneOf(name, kUnproven);
}

bool isShape(std::string_view name) {
    // Not `use`: it takes its offset back by subtracting it, so that what comes later may stand a rounding
    // error aside.
    static constexpr std::array<std::string_view, 7> kShapes = {"rect", "path",     "circle", "ellipse",
                                                                "line", "polyline", "polygon"};
    return isOneOf(name, kShapes);
}

bool isPainted(std::string_view name) {
    static constexpr std::array<std::string_view, 8> kOthers = {"text",  "textArea", "tspan",     "use",
                                                                "image", "video",    "animation", "arc"};
    return isShape(name) || isOneOf(name, kOthers);
}

bool isPaintedFillFirst(std::string_view name) {
    return isShape(name) && name != "line" && name != "polyline";
}

bool isEmptyRect(std::string_view name, std::string_view tag) {
    if (name != "rect") return false;
    TagAttributes attributes(tag);
    while (attributes.next()) {
        const bool isSize = attributes.name() == "width" || attributes.name() == "height";
        if (isSize && attributes.value().find_first_not_of("0.") == std::string_view::npos) return true;
    }
    return false;
}

bool staysWithinElement(std::string_view tag) {
    return !contains(tag, "visibility");
}

bool isPlainAttribute(std::string_view name, std::string_view value) {
    // What Illustrator writes; neither refers to anything.
    if (name.substr(0, 5) == "xmlns" || name == "requiredExtensions") return true;
    return !hasOtherReference(value) && (name != "style" || !contains(value, "\\"));
}

bool isProvenText(std::string_view xml) {
    // `comp-op` mixes colours in other ways than covering. That a polyline was open stays set in the
    // painter's stroker until the next solid stroke, and the ends of dashes come out by it.
    return !contains(xml, "comp-op") && !contains(xml, "<?xml-stylesheet") &&
           !(contains(xml, "dasharray") && contains(xml, "polyline"));
}

TagAttributes::TagAttributes(std::string_view tag) : rest_(tag.substr(indexOf(tag, 0, isBlank))) {}

bool TagAttributes::next() {
    const size_t begin = indexOf(rest_, 0, [](char c) { return !isBlank(c); });
    const size_t equals = rest_.find('=');
    if (equals == std::string_view::npos || begin > equals) return false;
    name_ = rest_.substr(begin, equals - begin);
    name_ = name_.substr(0, indexOf(name_, 0, isBlank));
    const size_t open = indexOf(rest_, equals, [](char c) { return c == '"' || c == '\''; });
    if (open == rest_.size()) return false;
    const size_t close = rest_.find(rest_[open], open + 1);
    if (close == std::string_view::npos) return false;
    value_ = rest_.substr(open + 1, close - open - 1);
    rest_ = rest_.substr(close + 1);
    return true;
}

bool mentionsUrl(std::string_view text) {
    const auto isUrl = [&](size_t at) {
        return (text[at] | 0x20) == 'u' && (text[at + 1] | 0x20) == 'r' && (text[at + 2] | 0x20) == 'l';
    };
    for (size_t at = 0; at + 2 < text.size(); ++at) {
        if (isUrl(at)) return true;
    }
    return false;
}

bool mentionsTransform(std::string_view text) {
    return contains(text, "transform");
}

bool isNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '.' || c == ':' || c == '-' || static_cast<unsigned char>(c) >= 0x80;
}

std::string_view nameOfTag(std::string_view tag) {
    const size_t begin = tag.substr(0, 2) == "</" ? 2 : 1;
    const size_t end = indexOf(tag, begin, [](char c) { return isBlank(c) || c == '/' || c == '>'; });
    const std::string_view name = tag.substr(begin, end - begin);
    return name.substr(name.find(':') + 1);
}

}  // namespace tzsvg
