// A load from its start to its end: recognise, prepare, capture, walk, convert, tag.
#include "import/SVGLoader.h"

#include <QScopeGuard>
#include <limits>

#include "import/NodeWalk.h"
#include "import/PackageCapture.h"
#include "svg/RoundTripNames.h"
#include "svg/shape/DocumentExtent.h"

namespace tzsvg {
namespace {

// The bytes that QString::toUtf8() gives, into a string whose room is used again: a document has millions of
// tags, nearly all of them ASCII.
void assignUtf8(std::string& bytes, QStringView text) {
    bytes.resize(static_cast<size_t>(text.size()));
    char* out = bytes.data();
    for (const QChar c : text) {
        if (c.unicode() >= 0x80) {
            const QByteArray converted = text.toUtf8();
            bytes.assign(converted.constData(), static_cast<size_t>(converted.size()));
            return;
        }
        *out++ = static_cast<char>(c.unicode());
    }
}

}  // namespace

SVGLoader::SVGLoader(const CTzPtr<ITzHost>& host) : CTzSceneLoader(CTzUser_Host(host)), log_(this->host()) {}

void SVGLoader::tagLastPolygon(TzTagId id, std::string_view text) {
    if (!lastPolygon_ || text.empty()) return;
    keptText_.take(text.size());
    setPolygonTag(*lastPolygon_, id, text);
}

void SVGLoader::tagLastPolygon(TzTagId id, QStringView text) {
    if (!lastPolygon_ || text.isEmpty()) return;
    assignUtf8(tagText_, text);
    tagLastPolygon(id, std::string_view(tagText_));
}

bool SVGLoader::recogniseFile(const std::string& fileName) {
    resetCounters();
    return readDocument(QString::fromStdString(fileName), document_);
}

void SVGLoader::startLoad() {
    resetCounters();
    loadedItem_ = createItem(kTzItemMesh);
    addPackage(kPackageName);
    setItemTag(kTagViewBoxCompare, "1");  // the view box replaces it when the walk has succeeded
}

bool SVGLoader::loadFile() {
    const auto clear = qScopeGuard([this] {
        parsedPaths_.clear();
        groups_.reset();
        document_.clear();
    });
    return loadDocument();
}

void SVGLoader::resetFile() noexcept {
    document_.clear();
    resetCounters();
}

bool SVGLoader::loadDocument() {
    bool measured = false;
    flipHeight_ = static_cast<float>(documentMaxY(document_.tree.top(), lengths_, measured, &parsedPaths_));
    // Also refuses infinity and not-a-number: the flip is about a whole number of 32 bits.
    constexpr auto kLargest = static_cast<float>(std::numeric_limits<int>::max());
    if (!measured || !(flipHeight_ < kLargest)) return false;

    DocumentSurvey& survey = document_.survey;
    if (survey.nodeCount == 0) return true;
    if (monitor()) monitor().initialise(survey.nodeCount);

    flattenSwitches(survey);
    if (!captureIntoPackage(*this, survey)) return false;

    // The walk starts at the document's last child, not at its root element: a comment behind the root is all
    // that is then walked, and the item stays empty. Meant so, stored scenes were made like this; Loader/walk
    // pins it.
    const XmlNode* const last = document_.tree.top().lastChild();
    if (last && !walkNodes(*this, *last)) return false;

    // Both tags get the same text: readers of stored scenes look for either. Meant so; Loader/item pins it.
    if (!viewBox_.empty()) {
        setItemTag(kTagViewBox, viewBox_);
        setItemTag(kTagViewBoxCompare, viewBox_);
    }
    return true;
}

void SVGLoader::resetCounters() noexcept {
    viewBox_.clear();
    flipHeight_ = 0.0F;
    lengths_ = {};
    ancestors_ = {};
    keptText_ = KeptText(document_.textLength);
    parsedPaths_.clear();
    groups_.reset();
    pathCounter_ = 0;
    lastPolygon_.reset();
}

}  // namespace tzsvg
