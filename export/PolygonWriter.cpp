// See the header. Called by SVGSaver::visitPolygon().
#include "export/PolygonWriter.h"

#include <QDomElement>
#include <array>
#include <string>

#include "export/RealText.h"
#include "export/SVGSaver.h"
#include "import/text/RoundTripNames.h"

namespace tzsvg {
namespace {

// The elements that line polygons become.
const QString kLine = QStringLiteral("line");
const QString kPolyline = QStringLiteral("polyline");
const QString kPolygon = QStringLiteral("polygon");

QString latin1(const std::string& text) {
    return QString::fromLatin1(text.data(), static_cast<decltype(QString().size())>(text.size()));
}

bool setEndPoints(const SVGSaver& saver, QDomElement element) {
    static const std::array<std::array<QString, 2>, 2> kNames = {
        {{QStringLiteral("x1"), QStringLiteral("y1")}, {QStringLiteral("x2"), QStringLiteral("y2")}}};
    for (size_t end = 0; end < kNames.size(); ++end) {
        const auto point = saver.project(saver.polygonVertices()[end]);
        if (!point) return false;
        const std::array<double, 2> coordinates = {point->x(), point->y()};
        for (size_t axis = 0; axis < coordinates.size(); ++axis) {
            std::string text;
            appendReal(text, coordinates[axis]);
            element.setAttribute(kNames[end][axis], latin1(text));
        }
    }
    return true;
}

bool setPoints(const SVGSaver& saver, QDomElement element) {
    static const QString kPoints = QStringLiteral("points");
    std::string text;
    for (const uint32_t vertex : saver.polygonVertices()) {
        const auto point = saver.project(vertex);
        if (!point) return false;
        appendReal(text, point->x());
        text += ',';
        appendReal(text, point->y());
        text += ' ';  // behind the last pair too; meant so
    }
    element.setAttribute(kPoints, latin1(text));
    return true;
}

}  // namespace

ErrorState writeLinePolygon(SVGSaver& saver) {
    const std::string* const primitive = saver.polygonTag(kTagPrimitive);
    const std::string kind = primitive ? *primitive : "POLYLINE";
    ChildOrder* const parent = kind.empty() ? nullptr : saver.selectParent();
    if (!parent) return ErrorState::kPolygon;

    const auto isKind = [&](const char* name) { return kind.find(name) != std::string::npos; };
    // Rectangles come back as polylines: their numbers in the kind text are not read. Meant so.
    const bool isPolyline = isKind("POLYLINE");
    const bool isPolygon = !isPolyline && isKind("POLYGON");
    const bool isLine = !isPolyline && !isPolygon && saver.polygonVertices().size() == 2;
    const QDomElement element =
        saver.document().createElement(isLine ? kLine : (isPolygon ? kPolygon : kPolyline));
    const bool written = isLine ? setEndPoints(saver, element) : setPoints(saver, element);
    if (!written) return ErrorState::kPolygon;
    saver.addElement(element, *parent);
    return ErrorState::kNone;
}

}  // namespace tzsvg
