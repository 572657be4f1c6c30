// A save from its start to its end: declaration and document type, root and stored blocks, groups, meshes,
// Illustrator data, and everything to the file.
#include "export/SVGSaver.h"

#include <QHash>
#include <algorithm>
#include <charconv>
#include <cmath>

#include "export/StyleAttributes.h"
#include "hostsdk/ITzMessages.h"
#include "svg/RoundTripNames.h"

namespace tzsvg {
namespace {

constexpr char kDeclaration[] = "<?xml version=\"1.0\"?>";

std::optional<uint32_t> readUnsigned(const std::string& text) {
    uint32_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || read != end) return std::nullopt;
    return value;
}

}  // namespace

SVGSaver::SVGSaver(const CTzPtr<ITzHost>& host) : CTzSceneSaver(CTzUser_Host(host)) {}

bool SVGSaver::close() noexcept {
    const bool closed = CTzLineFormat::close();
    reset();
    return closed;
}

// A warning that does not reach the user stops nobody from saving.
void SVGSaver::verifyScene() {
    tzGate([&] {
        // They are joined all the same.
        postMessage(kTzMessagesCommon, kTzMessageWarning, {"SVG sub-paths are output as individual paths."});
    });
}

// A preparatory pass has nothing to do.
TzResult SVGSaver::saveScene() {
    return reallySaving() ? writeDocument() : kTzOk;
}

// Reads what the packages of the meshes keep.
void SVGSaver::gatherStoredTexts() {
    startItemScan(kTzItemMesh);
    while (nextItem()) storedTexts_.push_back(readStoredTexts(*this));
}

TzResult SVGSaver::writeDocument() {
    document_ = {};
    viewBox_ = {};
    // Before anything is read, so that a save that fails leaves the beginning of a document.
    writeText(kDeclaration);
    lineBreak(false);
    gatherStoredTexts();
    writeDoctype();

    PackageTexts packages;
    for (const auto& texts : storedTexts_) {
        if (texts) packages.push_back(&*texts);
    }
    if (!addRoot(document_, packages, root_) || !addDefinitions(document_, packages, *root_) ||
        !addClipPaths(packages, *root_) || !addGroups()) {
        return kTzFailed;
    }
    const TzResult result = writeMeshes();
    if (!addIllustratorData(packages, *root_)) return kTzFailed;
    writeText("<!-- SVG file output by VANTO -->\n" + document_.save(*root_));
    return result;
}

// The first document type that a mesh keeps, as it is. It ends with a line end of its own, so that an empty
// line follows it. Meant so: the line break here is for texts of other tools. Saver/scenes (two-packages)
// pins it.
void SVGSaver::writeDoctype() {
    for (const auto& texts : storedTexts_) {
        if (!texts || texts->doctype.empty()) continue;
        writeText(texts->doctype);
        lineBreak(false);
        return;
    }
}

// Builds the groups of all packages. A mesh that carries none uses those of the first that does.
bool SVGSaver::addGroups() {
    QHash<QString, OutputGroups*> byText;
    OutputGroups* first = nullptr;
    for (const auto& texts : storedTexts_) {
        if (!texts) continue;
        OutputGroups*& groups = byText[texts->groups];
        if (groups) continue;
        groups = &groups_.emplace_back();
        if (!first) first = groups;
        if (!groups->build(texts->groups, document_, *root_)) return false;
    }
    for (const auto& texts : storedTexts_) {
        groupsOfMesh_.push_back(texts ? byText.value(texts->groups) : first);
    }
    return true;
}

// The result of the last mesh is the result: one that fails before it does not stop the scan. Meant so: one
// tilted mesh among the flat ones must not cost the user the drawing. Saver/lastMeshDecides pins it.
TzResult SVGSaver::writeMeshes() {
    orders_.emplace_back(*root_);
    TzResult result = kTzOk;
    startItemScan(kTzItemMesh);
    for (size_t mesh = 0; mesh < storedTexts_.size() && nextItem(); ++mesh) result = writeMesh(mesh);
    for (OutputGroups& groups : groups_) groups.apply();
    for (ChildOrder& order : orders_) order.apply();
    return result;
}

TzResult SVGSaver::writeMesh(size_t meshIndex) {
    polygonFailed_ = false;
    meshGroups_ = groupsOfMesh_[meshIndex];
    // An imported document comes back with its own groups and no other.
    meshParent_ = storedTexts_[meshIndex] ? &orders_.front() : nullptr;
    polygonCount_ = 0;
    points_.clear();
    if (!meshAvailable()) return kTzFailed;

    scanPoints();
    axis_ = findProjectionPlane(points_);
    if (axis_ == PlaneAxis::kNone) return kTzFailed;
    // A mesh without bounds is one that cannot be written, as one that is not flat: the others go out.
    if (tzFailed(tzGate([&] { bounds_ = meshBounds(); }))) return kTzFailed;
    const TzPoint& extent = bounds_.extent;
    strokeWidth_ = defaultStrokeWidth(std::max({extent.x, extent.y, extent.z}));
    projection_ =
        Projection(axis_, viewBox_.height > 0.0F ? static_cast<double>(viewBox_.height + viewBox_.y)
                                                 : planeCoordinates(axis_, extent.x, extent.y, extent.z).y());
    scanPolygons();
    if (polygonCount_ == 0) return kTzOk;
    if (!growViewBox()) return kTzFailed;
    root_->attributes().set(QStringLiteral("viewBox"), QString::fromStdString(viewBox_.text()));
    return polygonFailed_ ? kTzFailed : kTzOk;
}

// The group that holds the polygons of a mesh without a package, named after the item.
ChildOrder* SVGSaver::addMeshGroup() {
    const std::string name = itemName();
    const std::string id = name.substr(0, name.find(".m"));
    OutputElement& group = document_.makeElement(QStringLiteral("g"));
    if (!id.empty()) group.attributes().set(QStringLiteral("id"), QString::fromStdString(id));
    orders_.front().append(group);
    return &orders_.emplace_back(group);
}

// Widens the view box by the one that the mesh's first polygon names, or else by the mesh's bounds.
bool SVGSaver::growViewBox() {
    std::optional<ViewBox> box;
    if (selectPolygon(0)) {
        if (const std::string* const text = polygonTag(kTagViewBox)) box = readViewBox(*text);
    }
    if (!box) box = viewBoxOf(bounds_, axis_);
    return box && viewBox_.add(*box);
}

void SVGSaver::visitPoint() {
    points_.add(pointIdentifier(), pointPosition());
}

void SVGSaver::visitPolygon() {
    if (polygonFailed_) return;
    const TzTagId type = polygonType();
    if (type != kTzPolygonLine && type != kTzPolygonBezier) return;
    ++polygonCount_;
    if (!meshParent_) meshParent_ = addMeshGroup();
    const bool written =
        type == kTzPolygonLine ? PolygonWriter::writeLine(*this) : polygonWriter_.writePath(*this);
    polygonFailed_ = !written;
}

std::optional<QPointF> SVGSaver::project(uint32_t point) const {
    if (point >= points_.size()) return std::nullopt;
    const QPointF mapped = projection_.map(points_[point]);
    if (!std::isfinite(mapped.x()) || !std::isfinite(mapped.y())) return std::nullopt;
    return mapped;
}

ChildOrder* SVGSaver::selectParent() {
    const std::string* const number = polygonTag(kTagParentGroup);
    if (number && !number->empty()) {
        const auto value = readUnsigned(*number);
        return value && meshGroups_ ? meshGroups_->byNumber(*value) : nullptr;
    }
    if (meshGroups_) {
        const std::string* const name = polygonTag(kTagGroupName);
        ChildOrder* const group = name ? meshGroups_->byName(*name) : nullptr;
        if (group) return group;
    }
    return meshParent_;
}

void SVGSaver::addElement(ChildOrder& parent) {
    WriteStyleAttributes(*this);
    const std::string* const index = polygonTag(kTagDrawingIndex);
    parent.place(document_.addPolygon(element_), index ? readUnsigned(*index).value_or(0) : 0);
}

void SVGSaver::reset() noexcept {
    orders_.clear();  // before the document: they hold elements of it
    groups_.clear();
    groupsOfMesh_.clear();
    root_ = nullptr;
    document_ = {};
    storedTexts_.clear();
    viewBox_ = {};
    polygonWriter_.reset();
    points_ = {};
    axis_ = PlaneAxis::kNone;
    bounds_ = {};
    projection_ = {};
    strokeWidth_.clear();
    meshGroups_ = nullptr;
    meshParent_ = nullptr;
    polygonCount_ = 0;
    polygonFailed_ = false;
}

}  // namespace tzsvg
