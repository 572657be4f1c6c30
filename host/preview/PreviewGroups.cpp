#include "host/preview/PreviewGroups.h"

#include <QXmlStreamReader>
#include <charconv>
#include <optional>

#include "host/preview/PreviewText.h"

namespace tzhost {
namespace {

// Takes `expected` from the front of the text; false when it is not there.
bool take(std::string_view& text, std::string_view expected) {
    if (text.substr(0, expected.size()) != expected) return false;
    text.remove_prefix(expected.size());
    return true;
}

std::optional<uint32_t> takeNumber(std::string_view& text) {
    uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{}) return std::nullopt;
    text.remove_prefix(static_cast<size_t>(end - text.data()));
    return number;
}

// Takes the attributes before the "}" that is in no value, and puts blanks between them: in a record they
// stand side by side.
std::string takeAttributes(std::string_view& text) {
    std::string attributes;
    bool quoted = false;
    for (; !text.empty() && (quoted || text.front() != '}'); text.remove_prefix(1)) {
        attributes += text.front();
        if (text.front() != '"') continue;
        quoted = !quoted;
        if (!quoted) attributes += ' ';
    }
    return attributes;
}

// The attributes of the first element of a text.
QXmlStreamAttributes firstElement(const QString& text) {
    QXmlStreamReader reader(text);
    reader.setNamespaceProcessing(false);
    reader.readNextStartElement();
    return reader.attributes();
}

QString toText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

}  // namespace

PreviewEffects::PreviewEffects(const Properties& properties)
    : opacity(readOpacity(properties[Property::kOpacity])),
      clipPath(readReference(properties[Property::kClipPath])),
      mask(readReference(properties[Property::kMask])),
      filter(readReference(properties[Property::kFilter])) {}

PreviewGroups::PreviewGroups(std::string_view records, std::string_view root) {
    root_.inherited.apply(firstElement(toText(root)));
    root_.inherited = root_.inherited.passedOn();
    // g=id{2}parent{1}attributes{id="a" fill="red"};
    while (take(records, "g=id{")) {
        const std::optional<uint32_t> number = takeNumber(records);
        if (!number || !take(records, "}parent{")) return;
        const std::optional<uint32_t> parent = takeNumber(records);
        if (!parent && !take(records, "root")) return;
        if (!take(records, "}")) return;
        const bool has = take(records, "attributes{");
        const std::string attributes = has ? takeAttributes(records) : std::string();
        if (has && !take(records, "}")) return;
        if (!take(records, ";")) return;
        // Only groups that were there before can be parents, so that none is within itself.
        const auto found = parent ? groups_.find(*parent) : groups_.end();
        add(*number, found == groups_.end() ? root_ : found->second, attributes);
    }
}

void PreviewGroups::add(uint32_t number, const PreviewGroup& parent, std::string_view attributes) {
    PreviewGroup made;
    made.inherited = parent.inherited;
    made.inherited.apply(firstElement(QLatin1String("<g ") + toText(attributes) + QLatin1String("/>")));
    made.hidden = parent.hidden || made.inherited[Property::kDisplay] == QLatin1String("none");
    made.effects = PreviewEffects(made.inherited);
    made.inherited = made.inherited.passedOn();
    const auto [at, isNew] = groups_.emplace(number, made);
    if (!isNew) return;
    PreviewGroup& group = at->second;
    const bool isWhole = group.effects.any();
    group.whole = isWhole ? &group : parent.whole;
    group.wholeAround = isWhole ? parent.whole : parent.wholeAround;
}

const PreviewGroup& PreviewGroups::find(std::string_view number) const {
    const std::optional<uint32_t> parsed = takeNumber(number);
    const auto found = parsed ? groups_.find(*parsed) : groups_.end();
    return found == groups_.end() ? root_ : found->second;
}

}  // namespace tzhost
