#include "import/PackageCapture.h"

#include "import/Captures.h"
#include "import/SVGLoader.h"
#include "svg/RoundTripNames.h"

namespace tzsvg {
namespace {

void store(SVGLoader& loader, const char* channel, const QString& text) {
    if (text.isEmpty()) return;
    const std::string utf8 = text.toStdString();
    loader.keptText().take(utf8.size());
    loader.setChannel(channel, utf8);
}

// As store(), on the loaded item whatever item is current, which is current again afterwards.
void storeOnLoadedItem(SVGLoader& loader, const char* channel, const QString& text) {
    const uint32_t current = loader.currentItem();
    loader.selectItem(loader.loadedItem());
    store(loader, channel, text);
    loader.selectItem(current);
}

// What the root says about the document's size: the percent references of this load, and its view box.
void readRoot(SVGLoader& loader, const XmlNode& root) {
    LengthContext& lengths = loader.lengths();
    const double width = parseLength(root.attribute(Attribute::kWidth), Axis::kHorizontal, lengths);
    const double height = parseLength(root.attribute(Attribute::kHeight), Axis::kVertical, lengths);
    const QStringView viewBox = root.attribute(Attribute::kViewBox);
    loader.setViewBox(viewBox.toUtf8().toStdString());
    if (width > 0 && height > 0) {
        lengths.setPercentReferences(width, height);
    } else {
        lengths.setPercentReferencesFromViewBox(viewBox);
    }
}

}  // namespace

bool captureIntoPackage(SVGLoader& loader, const DocumentSurvey& survey) {
    store(loader, kChannelIllustrator, captureIllustratorData(survey));
    store(loader, kChannelDoctype, captureDoctype(loader.document()));
    if (survey.roots.empty()) return false;
    readRoot(loader, *survey.roots.front());
    store(loader, kChannelRoot, captureRoot(*survey.roots.front()));
    storeOnLoadedItem(loader, kChannelDefinitions, captureDefinitions(survey, loader.keptText().room()));
    storeOnLoadedItem(loader, kChannelClipPaths, captureClipPaths(survey, loader.keptText().room()));
    QString groups;
    if (!captureGroups(survey, loader.groups(), groups)) return false;
    store(loader, kChannelGroups, groups);
    return true;
}

}  // namespace tzsvg
