// See the header.
#include "export/ElementBuilder.h"

namespace tzsvg {
namespace {

const QString& textOf(ElementName name) {
    static const std::array<QString, 4> kNames = {QStringLiteral("line"), QStringLiteral("polyline"),
                                                  QStringLiteral("polygon"), QStringLiteral("path")};
    return kNames[static_cast<size_t>(name)];
}

const QString& textOf(AttributeName name) {
    static const std::array<QString, kAttributeCount> kNames = {
        QStringLiteral("x1"),
        QStringLiteral("y1"),
        QStringLiteral("x2"),
        QStringLiteral("y2"),
        QStringLiteral("points"),
        QStringLiteral("d"),
        QStringLiteral("clip-path"),
        QStringLiteral("stroke-dasharray"),
        QStringLiteral("stroke-dashoffset"),
        QStringLiteral("id"),
        QStringLiteral("fill"),
        QStringLiteral("fill-opacity"),
        QStringLiteral("fill-rule"),
        QStringLiteral("stroke-opacity"),
        QStringLiteral("stroke-linecap"),
        QStringLiteral("stroke"),
        QStringLiteral("stroke-linejoin"),
        QStringLiteral("stroke-width"),
        QStringLiteral("stroke-miterlimit"),
        QStringLiteral("opacity"),
        QStringLiteral("transform"),
    };
    return kNames[static_cast<size_t>(name)];
}

// A drawing has a dozen; a scene made to have as many as there can be must not fill the memory.
constexpr size_t kMostShared = 256;

}  // namespace

void ElementBuilder::start(ElementName name) {
    name_ = name;
    key_ = static_cast<uint32_t>(name) << kAttributeCount;
    set_.clear();
}

void ElementBuilder::set(AttributeName name, std::string_view text) {
    key_ |= 1U << static_cast<uint32_t>(name);
    set_.push_back(name);
    Value& value = values_[static_cast<size_t>(name)];
    if (value.bytes == text) return;
    value.bytes = text;
    value.text = QString::fromStdString(value.bytes);
}

void ElementBuilder::save(std::string& text) {
    auto found = shared_.find(key_);
    if (found == shared_.end()) {
        if (shared_.size() == kMostShared) shared_.clear();
        found = shared_.emplace(key_, makeShared()).first;
    }
    Shared& shared = found->second;
    for (size_t i = 0; i < set_.size(); ++i) {
        const QString& value = values_[static_cast<size_t>(set_[i])].text;
        if (shared.texts[i] == value) continue;
        shared.texts[i] = value;
        shared.attributes[i].setValue(value);
    }
    saved_.resize(0);
    shared.element.save(stream_, 0);
    stream_.flush();
    const QByteArray bytes = saved_.toUtf8();
    text.append(bytes.constData(), static_cast<size_t>(bytes.size()));
}

ElementBuilder::Shared ElementBuilder::makeShared() {
    Shared shared;
    shared.element = document_.createElement(textOf(name_));
    for (const AttributeName name : set_) {
        const QString& value = values_[static_cast<size_t>(name)].text;
        shared.element.setAttribute(textOf(name), value);
        shared.attributes.push_back(shared.element.attributeNode(textOf(name)));
        shared.texts.push_back(value);
    }
    return shared;
}

}  // namespace tzsvg
