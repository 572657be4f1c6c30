// See the header.
#include "export/ElementBuilder.h"

#include <QString>

#include "svg/tree/SavedForm.h"

namespace tzsvg {
namespace {

const char* textOf(ElementName name) {
    static constexpr std::array<const char*, 4> kNames = {"line", "polyline", "polygon", "path"};
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
constexpr size_t kMostOrders = 4096;

}  // namespace

void ElementBuilder::start(ElementName name) {
    name_ = name;
    key_ = 0;
    set_.clear();
}

void ElementBuilder::set(AttributeName name, std::string_view text) {
    key_ |= 1U << static_cast<uint32_t>(name);
    set_.push_back(name);
    Value& value = values_[static_cast<size_t>(name)];
    if (value.bytes == text && !value.saved.empty()) return;
    value.bytes = text;
    QString saved(u' ');
    saveAttribute(saved, textOf(name), QString::fromUtf8(text.data(), static_cast<int>(text.size())));
    value.saved = saved.toStdString();
}

void ElementBuilder::save(std::string& text) {
    auto found = orders_.find(key_);
    if (found == orders_.end()) {
        if (orders_.size() == kMostOrders) orders_.clear();
        found = orders_.emplace(key_, makeOrder()).first;
    }
    text += '<';
    text += textOf(name_);
    for (const AttributeName name : found->second) text += values_[static_cast<size_t>(name)].saved;
    text += "/>";
}

ElementBuilder::Order ElementBuilder::makeOrder() const {
    SavedAttributes attributes;
    for (const AttributeName name : set_)
        attributes.set(textOf(name), QString::number(static_cast<int>(name)));
    Order order;
    attributes.forEach([&](const QString&, const QString& number) {
        order.push_back(static_cast<AttributeName>(number.toInt()));
    });
    return order;
}

}  // namespace tzsvg
