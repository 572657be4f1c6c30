#include "export/StyleAttributes.h"

#include <QString>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <limits>
#include <vector>

#include "export/SVGSaver.h"
#include "svg/RoundTripNames.h"
#include "svg/text/NumberReader.h"

namespace tzsvg {
namespace {

// In ascending order of the IDs, which is the order of the attributes in the file.
const std::vector<AttributeTag>& sortedTags() {
    static const std::vector<AttributeTag> tags = [] {
        std::vector<AttributeTag> sorted(std::begin(kAttributeTags), std::end(kAttributeTags));
        std::sort(sorted.begin(), sorted.end(),
                  [](const AttributeTag& a, const AttributeTag& b) { return a.tag < b.tag; });
        return sorted;
    }();
    return tags;
}

// The attribute's text for an absent tag; empty for none.
std::string_view defaultText(const SVGSaver& saver, TzTagId tag) {
    switch (tag) {
        case kTagStrokeWidth:
            return saver.strokeWidth();
        case kTagStrokeOpacity:
            return "1.0";
        case kTagStroke:
            return "#000000";
        case kTagFill: {
            const std::vector<uint32_t>& vertices = saver.polygonVertices();
            const bool closed = !vertices.empty() && vertices.front() == vertices.back();
            return closed ? "" : "none";
        }
        default:
            return {};
    }
}

// Truncated, not clamped to a byte; kept inside 32 bits, where the result would otherwise be undefined.
unsigned colourComponent(float value) {
    const double scaled = static_cast<double>(value) * 255.0;
    constexpr double kLowest = std::numeric_limits<int32_t>::min();
    constexpr double kLargest = std::numeric_limits<int32_t>::max();
    const auto whole = std::isnan(scaled) ? 0 : static_cast<int32_t>(std::clamp(scaled, kLowest, kLargest));
    return static_cast<unsigned>(whole);
}

}  // namespace

std::string strokeColour(const std::string& text) {
    float red = 0.0F;
    float green = 0.0F;
    float blue = 0.0F;
    scanText(text.c_str(), "rgb: %f %f %f", &red, &green, &blue);
    std::array<char, 32> colour{};
    const int size = std::snprintf(colour.data(), colour.size(), "#%02x%02x%02x", colourComponent(red),
                                   colourComponent(green), colourComponent(blue));
    return {colour.data(), static_cast<size_t>(size)};
}

std::string defaultStrokeWidth(double largestExtent) {
    return QString::number(0.0025 * largestExtent, 'g', 17).toStdString();
}

void WriteStyleAttributes(SVGSaver& saver) {
    for (const AttributeTag& row : sortedTags()) {
        const auto set = [&](std::string_view value) {
            if (!value.empty()) saver.element().set(row.attribute, value);
        };
        const std::string* const text = saver.polygonTag(row.tag);
        if (!text) {
            set(defaultText(saver, row.tag));
        } else if (row.tag == kTagStroke && !text->empty() && text->front() != '#') {
            set(strokeColour(*text));
        } else {
            set(*text);
        }
    }
}

}  // namespace tzsvg
