#include "host/preview/PreviewProperties.h"

#include "host/preview/PreviewText.h"

namespace tzhost {
namespace {

constexpr size_t kFirstOfOneElement = static_cast<size_t>(Property::kOpacity);

struct PropertyNames {
    const char* attribute;
    TzTagId tag;  // 0: it has none
};

// In the order of Property.
constexpr PropertyNames kNames[] = {
    {"fill", tzTag("FILL")},
    {"fill-opacity", tzTag("FILO")},
    {"fill-rule", tzTag("FILR")},
    {"stroke", tzTag("LCOL")},
    {"stroke-opacity", tzTag("LALF")},
    {"stroke-width", tzTag("LWID")},
    {"stroke-dasharray", tzTag("DARR")},
    {"stroke-dashoffset", tzTag("DOFF")},
    {"stroke-linecap", tzTag("LCAP")},
    {"stroke-linejoin", tzTag("LJON")},
    {"stroke-miterlimit", tzTag("MLIM")},
    {"color", 0},
    {"visibility", 0},
    {"opacity", tzTag("OPAC")},
    {"clip-path", tzTag("CPAT")},
    {"mask", 0},
    {"filter", 0},
    {"display", 0},
};

QString toText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<int>(text.size())).trimmed();
}

}  // namespace

Properties Properties::passedOn() const {
    Properties passed = *this;
    for (size_t i = kFirstOfOneElement; i < kCount; ++i) passed.texts_[i].clear();
    return passed;
}

void Properties::set(size_t property, const QString& text) {
    if (!text.isEmpty() && text != QLatin1String("inherit")) texts_[property] = text;
}

void Properties::apply(const QXmlStreamAttributes& attributes) {
    const QString style = attributes.value(QLatin1String("style")).toString();
    for (size_t i = 0; i < kCount; ++i) {
        set(i, attributes.value(QLatin1String(kNames[i].attribute)).toString().trimmed());
        if (!style.isEmpty()) set(i, styleProperty(style, kNames[i].attribute));
    }
}

void Properties::apply(const TagRun& tags) {
    for (TagReader tag(tags); tag.next();) {
        if (tag.id() == tzTag("STYL")) {
            const QString style = toText(tag.text());
            for (size_t i = 0; i < kCount; ++i) {
                if (kNames[i].tag == 0) set(i, styleProperty(style, kNames[i].attribute));
            }
            continue;
        }
        for (size_t i = 0; i < kCount; ++i) {
            if (kNames[i].tag == tag.id()) set(i, toText(tag.text()));
        }
    }
}

bool Properties::isHidden() const {
    const QString& visibility = (*this)[Property::kVisibility];
    return (*this)[Property::kDisplay] == QLatin1String("none") || visibility == QLatin1String("hidden") ||
           visibility == QLatin1String("collapse");
}

}  // namespace tzhost
