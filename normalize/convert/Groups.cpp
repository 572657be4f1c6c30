#include "normalize/convert/Groups.h"

#include <cstring>

#include "normalize/convert/Sight.h"
#include "normalize/paint/ClipPaths.h"
#include "normalize/paint/Filters.h"
#include "normalize/paint/Masks.h"
#include "normalize/style/Reference.h"
#include "normalize/text/NumberCursor.h"
#include "normalize/write/Definitions.h"

namespace tznormalize {
namespace {

// Groups nested deeper are dissolved, their effects with them: the module refuses documents of more than 256
// levels, and a group may take two.
constexpr int kDeepestGroup = 110;

bool isReference(const Style& style, Property property) {
    const QStringView value = style[property];
    return value != u"none" && readReference(value).isUrl;
}

// Whether a reference leads to something of its kind; others are left out.
bool leadsTo(const Conversion& conversion, const Style& style, Property property, Tag tag) {
    if (!isReference(style, property)) return false;
    const SourceElement* element = conversion.source.byId(readReference(style[property]).id);
    return element && element->tag() == tag;
}

bool isBlended(const Style& style) {
    return style[Property::kMixBlendMode] != u"normal";
}

bool needsBox(const Style& style) {
    return isReference(style, Property::kClipPath) || isReference(style, Property::kMask) ||
           style[Property::kFilter] != u"none";
}

// Attributes that stay on a group: what users and programs know it by. What has been resolved is not among
// them.
bool isKept(const SourceAttribute& attribute) {
    const AttributeName& name = *attribute.name;
    if (!name.namespaceUri.isEmpty()) return name.name == Name::kOther;
    return name.name == Name::kClass || name.localName.startsWith(u"data-") ||
           name.localName.startsWith(u"aria-") || name.localName == u"role";
}

// Whether it is never drawn where it stands: its id is free to name a definition.
bool standsInDefinition(const SourceElement& element) {
    for (const SourceElement* above = element.parent(); above; above = above->parent()) {
        switch (above->tag()) {
            case Tag::kClipPath:
            case Tag::kDefs:
            case Tag::kMarker:
            case Tag::kMask:
            case Tag::kPattern:
            case Tag::kSymbol:
                return true;
            default:
                break;
        }
    }
    return false;
}

}  // namespace

void noteEffect(Conversion& conversion, const SourceElement& element, const Effect& effect,
                const char* attribute) {
    if (effect.leftOut) {
        addNote(conversion, NoteCode::kLeftOut, element, QString::fromLatin1(effect.leftOut), attribute);
    }
}

bool isPlainGroup(const OutputElement& element) {
    return std::strcmp(element.name(), "g") == 0 && element.attributes().empty();
}

void keepAttributes(const SourceElement& element, OutputElement& out) {
    for (const SourceAttribute& attribute : element) {
        const char* name = attribute.name->written.c_str();
        if (isKept(attribute) && !out.has(name)) out.set(name, attribute.value.toUtf8().toStdString());
    }
}

bool hasFilter(const Conversion& conversion, const Style& style) {
    const QStringView filter = style[Property::kFilter];
    // Functions (blur() and the like) are noted where groups are finished.
    const bool isFunction = filter != u"none" && !readReference(filter).isUrl;
    return isFunction || leadsTo(conversion, style, Property::kFilter, Tag::kFilter);
}

bool hasGroupEffect(const Conversion& conversion, const Style& style) {
    return hasFilter(conversion, style) || leadsTo(conversion, style, Property::kMask, Tag::kMask) ||
           isBlended(style);
}

void keepId(const Conversion& conversion, const SourceElement& element, OutputElement& out,
            const Target& target) {
    // A copy that a reference made has no id, nor has the second of two with the same.
    if (!target.isDrawn || element.id().isEmpty() || !conversion.visited.isEmpty()) return;
    if (conversion.source.byId(element.id()) == &element) out.set("id", cleanId(element.id()));
}

Group::Group(Conversion& conversion, const SourceElement& element, const Place& place, Target& target)
    : conversion_(conversion),
      element_(element),
      place_(place),
      target_(target),
      firstPath_(target.paths.size()),
      clipCount_(target.clips.size()),
      drawnBefore_(conversion.drawn),
      hasFilter_(hasFilter(conversion, place.style)),
      isCollecting_(!target.isMeasured && needsBox(place.style)) {
    target.isCollecting += isCollecting_;
    target.filters += hasFilter_;
    ++target.depth;
    if (!target.isDrawn) return;
    if (const std::optional<Box> box = boxOfClip(conversion, place)) target.clips.push_back(*box);
}

Group::Group(Conversion& conversion, const SourceElement& element, const Place& place, Target& target,
             const PlacedPaths& object)
    : Group(conversion, element, place, target) {
    object_ = object;
}

Group::~Group() {
    target_.isCollecting -= isCollecting_;
    target_.filters -= hasFilter_;
    --target_.depth;
    target_.clips.resize(clipCount_);
    if (target_.isCollecting == 0) target_.paths.clear();
}

void Group::clipTo(const Path& outline) {
    clip_ = outline;
    const std::optional<Box> box = outline.controlsBox();
    if (target_.isDrawn && box) target_.clips.push_back(*box);
}

// False when nothing is drawn at all.
bool Group::setEffects(const PlacedPaths& object) {
    const Style& style = place_.style;
    const double opacity = readOpacity(style[Property::kOpacity]);
    if (opacity <= 0.0) return false;
    if (opacity < 1.0) group_.set("opacity", shortNumber(opacity));
    using Resolve = Effect (*)(Conversion&, const Place&, const PlacedPaths&);
    const struct {
        const char* attribute;
        Property property;
        Resolve resolve;
    } effects[] = {{"clip-path", Property::kClipPath, resolveClip},
                   {"mask", Property::kMask, resolveMask},
                   {"filter", Property::kFilter, resolveFilter}};
    for (const auto& [attribute, property, resolve] : effects) {
        if (style[property] == u"none") continue;
        const Effect effect = resolve(conversion_, place_, object);
        noteEffect(conversion_, element_, effect, attribute);
        if (effect.kind == EffectKind::kDrawsNothing) return false;
        if (effect.kind == EffectKind::kUrl) group_.set(attribute, effect.url);
    }
    // There is no attribute for it; a group's "style" comes back word for word.
    if (isBlended(style))
        group_.set("style", "mix-blend-mode:" + style[Property::kMixBlendMode].toUtf8().toStdString());
    return true;
}

// Only areas count in a clip path, and no groups may be in it.
void Group::finishInClip(OutputElement& out) {
    std::string url;
    if (clip_) {
        url = clipToPath(conversion_, *clip_);
    } else {
        const Effect clip = resolveClip(conversion_, place_, PlacedPaths(target_.paths, firstPath_));
        noteEffect(conversion_, element_, clip, "clip-path");
        if (clip.kind == EffectKind::kDrawsNothing) return;
        url = clip.url;
    }
    for (OutputElement& part : group_.children()) {
        if (!url.empty() && !part.has("clip-path")) part.set("clip-path", url);
        out.append(std::move(part));
    }
}

// The clip path of a viewport stands outside of the group's own.
void Group::wrapInClip() {
    const std::string url = clipToPath(conversion_, *clip_);
    if (group_.has("clip-path")) {
        OutputElement inner = std::move(group_);
        group_ = OutputElement("g");
        group_.append(std::move(inner));
    }
    group_.set("clip-path", url);
}

void Group::finish(OutputElement& out, Names names) {
    if (group_.children().empty()) return;
    if (target_.isClip) return finishInClip(out);
    if (!setEffects(object_ ? *object_ : PlacedPaths(target_.paths, firstPath_))) {
        conversion_.drawn = drawnBefore_;
        return;
    }
    if (clip_) wrapInClip();
    if (target_.isDrawn) {
        if (target_.depth > kDeepestGroup) return out.takeChildren(group_);
        if (names == Names::kKept && conversion_.keepsNames()) {
            keepId(conversion_, element_, group_, target_);
            keepAttributes(element_, group_);
            if (!label_.empty()) group_.set("aria-label", std::move(label_));
            for (const auto& attribute : group_.attributes())
                conversion_.budget.spendText(attribute.value.size());
        }
        out.append(std::move(group_));
        return;
    }
    if (group_.attributes().empty()) return out.takeChildren(group_);
    // [trap: a group in a mask or marker refuses the load, one in a group of the definitions the export] Each
    // stands directly in the definitions, and is linked.
    const SourceElement* const origin = standsInDefinition(element_) ? &element_ : nullptr;
    const std::string name = conversion_.definitions.freshName("part", origin);
    group_.set("id", name);
    conversion_.definitions.define(std::move(group_));
    out.append(OutputElement("use")).set("xlink:href", "#" + name);
}

}  // namespace tznormalize
