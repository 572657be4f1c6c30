#include "host/preview/definitions/PreviewDefinitions.h"

#include <QXmlStreamReader>
#include <algorithm>

namespace tzhost {
namespace {

constexpr int kMostOrigins = 32;  // links from element to element; they may lead in a circle

}  // namespace

QString PreviewDefinitions::Element::attribute(const char* attributeName) const {
    return attributes.value(QLatin1String(attributeName)).toString().trimmed();
}

PreviewDefinitions::PreviewDefinitions(std::string_view definitions, std::string_view clipPaths) {
    read(definitions);
    read(clipPaths);
}

void PreviewDefinitions::read(std::string_view fragment) {
    if (fragment.empty()) return;
    const QString text = QString::fromUtf8(fragment.data(), static_cast<int>(fragment.size()));
    QXmlStreamReader reader(QLatin1String("<svg>") + text + QLatin1String("</svg>"));
    reader.setNamespaceProcessing(false);
    std::vector<int> open;
    const auto close = [&] {
        elements_[static_cast<size_t>(open.back())].end = static_cast<int>(elements_.size());
        open.pop_back();
    };
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::StartElement) {
            const int index = static_cast<int>(elements_.size());
            elements_.push_back({reader.name().toString(), reader.attributes(), 0});
            open.push_back(index);
            const QString id = elements_.back().attribute("id");
            if (!id.isEmpty() && !byId_.contains(id)) byId_.insert(id, index);
        } else if (token == QXmlStreamReader::EndElement && !open.empty()) {
            close();
        }
    }
    while (!open.empty()) close();  // those that a fault left open
}

int PreviewDefinitions::find(const QString& id, std::initializer_list<const char*> names) const {
    const int index = byId_.value(id, -1);
    if (index < 0) return -1;
    const QString& name = elements_[static_cast<size_t>(index)].name;
    return std::any_of(names.begin(), names.end(),
                       [&](const char* each) { return name == QLatin1String(each); })
               ? index
               : -1;
}

int PreviewDefinitions::origin(int element) const {
    const Element& from = elements_[static_cast<size_t>(element)];
    QString link = from.attribute("xlink:href");
    if (link.isEmpty()) link = from.attribute("href");
    return link.startsWith(QLatin1Char('#')) ? byId_.value(link.mid(1), -1) : -1;
}

QString PreviewDefinitions::inherited(int element, const char* attributeName) const {
    for (int links = 0; element >= 0 && links < kMostOrigins; ++links, element = origin(element)) {
        QString text = elements_[static_cast<size_t>(element)].attribute(attributeName);
        if (!text.isEmpty()) return text;
    }
    return {};
}

}  // namespace tzhost
