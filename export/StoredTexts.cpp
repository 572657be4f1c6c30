// See the header.
#include "export/StoredTexts.h"

#include "export/SVGSaver.h"
#include "svg/RoundTripNames.h"

namespace tzsvg {

std::optional<StoredTexts> readStoredTexts(const SVGSaver& saver) {
    bool found = false;
    const auto read = [&](const char* channel) {
        std::optional<std::string> text;
        if (tzFailed(tzGate([&] { text = saver.channel(channel); }))) throw CTzError(kTzFailed);
        found = found || text;
        return text.value_or(std::string());
    };
    StoredTexts texts;
    texts.doctype = read(kChannelDoctype);
    texts.root = QString::fromStdString(read(kChannelRoot));
    texts.definitions = QString::fromStdString(read(kChannelDefinitions));
    texts.clipPaths = QString::fromStdString(read(kChannelClipPaths));
    texts.groups = QString::fromStdString(read(kChannelGroups));
    texts.illustratorData = QString::fromStdString(read(kChannelIllustrator));
    if (!found) return std::nullopt;
    return texts;
}

}  // namespace tzsvg
