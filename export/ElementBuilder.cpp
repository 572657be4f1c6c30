#include "export/ElementBuilder.h"

#include <QString>

#include "svg/tree/SavedForm.h"

namespace tzsvg {
namespace {

// A drawing has a dozen; a scene made to have as many as there can be must not fill the memory.
constexpr size_t kMostForms = 4096;

}  // namespace

void ElementBuilder::start(Element name) {
    name_ = name;
    key_ = static_cast<uint64_t>(name) << kAttributeCount;
    set_.clear();
}

void ElementBuilder::set(Attribute name, std::string_view text) {
    key_ |= uint64_t{1} << static_cast<unsigned>(name);
    set_.push_back(name);
    Value& value = values_[static_cast<size_t>(name)];
    if (value.bytes == text && !value.saved.empty()) return;
    value.bytes = text;
    QString saved(u' ');
    saveAttribute(saved, nameOf(name), QString::fromUtf8(text.data(), static_cast<int>(text.size())));
    value.saved = saved.toStdString();
}

void ElementBuilder::save(std::string& text) {
    auto found = forms_.find(key_);
    if (found == forms_.end()) {
        if (forms_.size() == kMostForms) forms_.clear();
        found = forms_.emplace(key_, makeForm()).first;
    }
    const Form& form = found->second;
    text += form.opening;
    for (const Attribute name : form.attributes) text += values_[static_cast<size_t>(name)].saved;
    text += "/>";
}

ElementBuilder::Form ElementBuilder::makeForm() const {
    SavedAttributes attributes;
    for (const Attribute name : set_) attributes.set(nameOf(name), QString::number(static_cast<int>(name)));
    Form form;
    form.opening = '<' + nameOf(name_).toStdString();
    attributes.forEach([&](const QString&, const QString& number) {
        form.attributes.push_back(static_cast<Attribute>(number.toInt()));
    });
    return form;
}

}  // namespace tzsvg
