// What must hold of a drawing, and of an element, so that leaving the element out where it paints nothing
// leaves every other pixel as it is. Each rule answers to something that Qt's renderer does from one element
// to the next; what no rule allows is drawn. Used by DrawingParts; pure.
#pragma once

#include <algorithm>
#include <string_view>

namespace tzsvg {

// Whether the versions of Qt are known to draw each element on its own: those whose source was read and that
// `./bench/tiles-equal` has compared. Later ones draw groups with masks and filters as wholes.
bool isProvenRenderer();

// Whether the text before the root element says nothing that changes what elements mean: another encoding,
// attributes by default, entities with tags in them.
bool isProvenProlog(std::string_view prolog);

// Whether a style sheet, the text of a `style` element, selects elements only by what they and their
// ancestors are. One that looks at siblings or positions selects others when an element is left out.
bool isProvenStyleSheet(std::string_view css);

// Whether an element of that name, anywhere, allows that others are left out: not animations, which move
// with the time since the drawing was loaded, nor images, whose files a smaller drawing would not find.
bool isProvenElement(std::string_view name);

// Whether the name is that of an element that paints by itself and leaves the painter as it was.
bool isShape(std::string_view name);

// Whether an element of that name is painted where it stands, and whether Qt begins with a fill, once,
// whatever the style. It fills polylines only where they are to be, and lines never.
bool isPainted(std::string_view name);
bool isPaintedFillFirst(std::string_view name);

// Whether a start tag is that of a rectangle without width or height, which Qt drops. There may be others.
bool isEmptyRect(std::string_view name, std::string_view tag);

// Whether a start tag says nothing that reaches beyond its element. `visibility` does: an element that is
// visible makes the groups around it visible, and with them what comes later.
bool staysWithinElement(std::string_view tag);

// Whether an attribute's value is what it looks like: no references to entities, no escapes in a style.
bool isPlainAttribute(std::string_view name, std::string_view value);

// Whether nothing in the whole text makes what an element paints depend on another.
bool isProvenText(std::string_view xml);

// The attributes of a start tag, one after another.
class TagAttributes {
  public:
    explicit TagAttributes(std::string_view tag);
    bool next();
    std::string_view name() const { return name_; }
    std::string_view value() const { return value_; }

  private:
    std::string_view rest_;
    std::string_view name_;
    std::string_view value_;
};

// The name of the element that a tag starts or ends, without a prefix: Qt does not look at namespaces.
std::string_view nameOfTag(std::string_view tag);

// Whether a tag or style sheet may move what it is of.
bool mentionsTransform(std::string_view text);

// Whether a text may hold a reference of the form url(#id).
bool mentionsUrl(std::string_view text);

bool isNameCharacter(char c);

inline bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

// Hands every run of name characters to `use`: whatever brackets, marks and blanks a reference is written
// with, the ID is one of them.
template <class Use>
void forEachName(std::string_view text, Use&& use) {
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at != end;) {
        const char* const begin = std::find_if(at, end, isNameCharacter);
        at = std::find_if_not(begin, end, isNameCharacter);
        if (begin != at) use(std::string_view(begin, static_cast<size_t>(at - begin)));
    }
}

}  // namespace tzsvg
