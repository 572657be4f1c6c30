#include "normalize/content/Images.h"

#include <QBuffer>
#include <QImageReader>
#include <cmath>

#include "normalize/content/EmbeddedPicture.h"
#include "normalize/convert/Shapes.h"
#include "normalize/geometry/ShapeOutline.h"
#include "normalize/paint/DefinitionText.h"

namespace tznormalize {
namespace {

constexpr int kDigits = 9;

// In pixels; empty for what is no picture that Qt reads.
QSize sizeInside(const std::string& dataUri) {
    const size_t comma = dataUri.find(',');
    if (comma == std::string::npos || dataUri.compare(comma - 7, 7, ";base64") != 0) return {};
    QByteArray bytes = QByteArray::fromBase64(
        QByteArray::fromRawData(dataUri.data() + comma + 1, int(dataUri.size() - comma - 1)));
    QBuffer buffer(&bytes);
    return QImageReader(&buffer).size();
}

// Where the picture is laid, in the element's user space. A missing side is that of the picture itself, in
// proportion.
std::optional<Box> readBox(const Conversion& conversion, const SourceElement& image, const Place& place,
                           const std::string& data) {
    const auto length = [&](Name name, Axis axis) {
        return readLength(conversion.styles.geometryValue(image, name), axis, place.viewport,
                          place.style.fontSize());
    };
    const double x = length(Name::kX, Axis::kHorizontal).value_or(0.0);
    const double y = length(Name::kY, Axis::kVertical).value_or(0.0);
    std::optional<double> width = length(Name::kWidth, Axis::kHorizontal);
    std::optional<double> height = length(Name::kHeight, Axis::kVertical);
    if (!width || !height) {
        const QSize size = sizeInside(data);
        if (size.isEmpty()) return std::nullopt;
        if (!width) width = height ? *height * size.width() / size.height() : size.width();
        if (!height) height = *width * size.height() / size.width();
    }
    const Box box = {x, y, x + *width, y + *height};
    if (!box.hasArea() || !std::isfinite(box.width() + box.height() + x + y)) return std::nullopt;
    return box;
}

OutputElement imageElement(const SourceElement& image, const Place& place, const Box& box, std::string data) {
    OutputElement out("image");
    out.set("x", shortNumber(box.left, kDigits));
    out.set("y", shortNumber(box.top, kDigits));
    out.set("width", shortNumber(box.width(), kDigits));
    out.set("height", shortNumber(box.height(), kDigits));
    const QStringView aspect = image.attribute(Name::kPreserveAspectRatio);
    if (!aspect.isEmpty()) out.set("preserveAspectRatio", aspect.toString().simplified().toStdString());
    const QStringView rendering = place.style[Property::kImageRendering];
    if (rendering != initialValue(Property::kImageRendering))
        out.set("image-rendering", rendering.toString().toStdString());
    if (!place.ctm.isIdentity()) out.set("transform", matrixText(place.ctm));
    out.set("xlink:href", std::move(data));
    return out;
}

// A pattern as large as the page, with the picture at its place; written as patternPaint() writes one, so
// that it stays the same when it is normalized again.
std::string definePattern(Conversion& conversion, OutputElement picture) {
    OutputElement pattern("pattern");
    std::string id = conversion.definitions.freshName("paint");
    std::string url = urlTo(id);
    pattern.set("id", std::move(id));
    pattern.set("patternUnits", "userSpaceOnUse");
    pattern.set("x", "0");
    pattern.set("y", "0");
    pattern.set("width", shortNumber(conversion.page.right, kDigits));
    pattern.set("height", shortNumber(conversion.page.bottom, kDigits));
    pattern.append(std::move(picture));
    conversion.definitions.define(std::move(pattern));
    return url;
}

// What of the page the picture covers, in whole units.
std::optional<Box> coveredBox(const Conversion& conversion, const Box& box) {
    const Box whole = {std::floor(box.left), std::floor(box.top), std::ceil(box.right),
                       std::ceil(box.bottom)};
    const std::optional<Box> covered = intersection(whole, conversion.page);
    return covered && covered->hasArea() ? covered : std::nullopt;
}

}  // namespace

void convertImage(Conversion& conversion, const SourceElement& image, const Place& place,
                  OutputElement& group, Target& target) {
    if (isHidden(place.style) || target.isClip || image.href().isEmpty()) return;
    // In a definition, pictures do not count for the import's flip height: they need not be moved up.
    if (target.isMeasured && !target.isDrawn) return;
    std::string data = pictureData(conversion, image, image.href());
    if (data.empty()) return;
    const std::optional<Box> box = readBox(conversion, image, place, data);
    if (!box) return;
    const Path outline = rectangleOutline(*box);
    target.add(outline, place.ctm);
    if (target.isMeasured) return;
    OutputElement picture = imageElement(image, place, *box, std::move(data));
    if (!target.isDrawn) {
        group.append(std::move(picture));
        return;
    }
    const std::optional<Box> covered = coveredBox(conversion, mapped(*box, place.ctm));
    if (!covered) {
        addNote(conversion, NoteCode::kLeftOut, image, QStringLiteral("lies outside of the page"));
        return;
    }
    Look look;
    look.fill.value = definePattern(conversion, std::move(picture));
    std::optional<WrittenShape> shape =
        writeShape(conversion, rectangleOutline(*covered), Tag::kPolygon, look, look.fill, false);
    if (!shape) return;
    appendDrawn(conversion, std::move(*shape), group, target);
    addNote(conversion, NoteCode::kCarried, image, QStringLiteral("it became the fill pattern of a polygon"));
}

}  // namespace tznormalize
