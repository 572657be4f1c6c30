#include "normalize/write/Definitions.h"

#include <string_view>
#include <utility>

namespace tznormalize {
namespace {

constexpr std::string_view kUrlOpening = "url(#";

// Calls back with every id that an attribute of the element or of anything inside refers to.
template <class Found>
void findReferences(const OutputElement& element, const Found& found) {
    for (const OutputElement::Attribute& one : element.attributes()) {
        const std::string_view value = one.value;
        const std::string_view name = one.name;
        if (name == "d" || name == "points") continue;  // long, and only numbers
        for (size_t at = value.find(kUrlOpening); at != std::string_view::npos;
             at = value.find(kUrlOpening, at)) {
            at += kUrlOpening.size();
            found(std::string(value.substr(at, value.find(')', at) - at)));
        }
        const bool isLink = name == "href" || name == "xlink:href";
        if (isLink && !value.empty() && value.front() == '#') found(std::string(value.substr(1)));
    }
    for (const OutputElement& child : element.children()) findReferences(child, found);
}

// Those of `from` that are used, moved behind the children of `to`.
void moveThoseUsed(std::vector<OutputElement>& from, const std::unordered_set<const OutputElement*>& used,
                   OutputElement& to) {
    for (OutputElement& one : from) {
        if (used.count(&one) != 0) to.append(std::move(one));
    }
    from.clear();
}

}  // namespace

std::string Definitions::freshName(const char* stem, const SourceElement* origin) {
    if (origin && !origin->id().isEmpty()) {
        std::string own = cleanId(origin->id());
        if (names_.insert(own).second) return own;
    }
    while (true) {
        std::string name = stem + std::to_string(++count_);
        if (!source_.byId(QString::fromStdString(name)) && names_.insert(name).second) return name;
    }
}

void Definitions::define(OutputElement element) {
    definitions_.push_back(std::move(element));
}

void Definitions::defineClip(OutputElement clipPath) {
    clips_.push_back(std::move(clipPath));
}

const std::string* Definitions::known(const std::string& key) const {
    const auto found = known_.find(key);
    return found == known_.end() ? nullptr : &found->second;
}

void Definitions::remember(std::string key, std::string value) {
    known_.insert_or_assign(std::move(key), std::move(value));
}

void Definitions::moveUsed(const OutputElement& drawn, OutputElement& root) {
    std::unordered_map<std::string, const OutputElement*> byId;
    for (const auto* all : {&definitions_, &clips_}) {
        for (const OutputElement& one : *all) {
            if (const std::string* id = one.value("id")) byId.emplace(*id, &one);
        }
    }
    std::unordered_set<const OutputElement*> used;
    std::vector<const OutputElement*> waiting = {&drawn};
    while (!waiting.empty()) {
        const OutputElement& next = *waiting.back();
        waiting.pop_back();
        findReferences(next, [&](const std::string& id) {
            const auto found = byId.find(id);
            if (found != byId.end() && used.insert(found->second).second) waiting.push_back(found->second);
        });
    }
    OutputElement defs("defs");
    moveThoseUsed(definitions_, used, defs);
    if (!defs.children().empty()) root.append(std::move(defs));
    moveThoseUsed(clips_, used, root);
}

std::string cleanId(QStringView id) {
    QString clean = id.trimmed().toString();
    for (QChar& c : clean) {
        if (c.isSpace() || QStringView(u"\"'(){}<>&;#\\").contains(c)) c = u'_';
    }
    return clean.toStdString();
}

}  // namespace tznormalize
