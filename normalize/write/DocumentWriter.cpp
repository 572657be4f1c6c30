#include "normalize/write/DocumentWriter.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace tznormalize {
namespace {

constexpr char kHead[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
constexpr char kRootOpening[] = "<svg xmlns=\"http://www.w3.org/2000/svg\"";

// Whether all characters may stand as they are. Without an early exit, and kind by kind, so that the compiler
// can vectorise it.
bool isPlain(std::string_view text) {
    uint8_t controls = 0;
    uint8_t references = 0;
    uint8_t tags = 0;
    uint8_t quotes = 0;
    for (const char one : text) {
        const auto c = uint8_t(one);
        controls |= uint8_t(c < ' ');
        references |= uint8_t(c == '&');
        tags |= uint8_t((c | 2) == '>');  // or '<'
        quotes |= uint8_t(c == '"');
    }
    return (controls | references | tags | quotes) == 0;
}

// Text that grows at its end, in the array that is handed out.
class TextWriter {
  public:
    explicit TextWriter(size_t expected) : bytes_(Size(expected), Qt::Uninitialized) {}

    void add(char c) {
        if (at_ == end_) grow(1);
        *at_++ = c;
    }
    void add(std::string_view text) {
        if (size_t(end_ - at_) < text.size()) grow(text.size());
        at_ = std::copy(text.begin(), text.end(), at_);
    }

    // Line breaks become blanks, and characters that XML does not allow go.
    void addEscaped(std::string_view text) {
        if (isPlain(text)) return add(text);
        for (const char c : text) {
            if (c == '&') {
                add("&amp;");
            } else if (c == '<') {
                add("&lt;");
            } else if (c == '>') {
                add("&gt;");
            } else if (c == '"') {
                add("&quot;");
            } else if (c == '\n' || c == '\r' || c == '\t') {
                add(' ');
            } else if (uint8_t(c) >= ' ') {
                add(c);
            }
        }
    }

    size_t size() const { return size_t(at_ - bytes_.constData()); }

    QByteArray take() {
        bytes_.resize(Size(size()));
        return std::move(bytes_);
    }

  private:
    using Size = decltype(QByteArray().size());

    void grow(size_t more) {
        const size_t used = size();
        const size_t grown = 2 * used + more;
        bytes_.resize(Size(grown));
        at_ = bytes_.data() + used;
        end_ = bytes_.data() + bytes_.size();
    }

    QByteArray bytes_;
    char* at_ = bytes_.data();
    char* end_ = at_ + bytes_.size();
};

class ElementWriter {
  public:
    ElementWriter(const std::vector<Namespace>& namespaces, TextWriter& out)
        : namespaces_(namespaces), isUsed_(namespaces.size()), out_(out) {}

    void writeAttributes(const OutputElement& element) {
        for (const OutputElement::Attribute& one : element.attributes()) {
            const std::string_view name = one.name;
            out_.add(' ');
            out_.add(name);
            out_.add("=\"");
            out_.addEscaped(one.value);
            out_.add('"');
            const size_t colon = name.find(':');
            if (colon != std::string_view::npos) use(name.substr(0, colon));
        }
    }

    // The depth is that of the source, which is bounded.
    void writeElement(const OutputElement& element) {
        out_.add('<');
        out_.add(element.name());
        writeAttributes(element);
        writeContent(element);
    }

    // From the end of the start tag to the end tag.
    void writeContent(const OutputElement& element) {
        if (element.children().empty() && element.text.empty()) {
            out_.add("/>");
            return;
        }
        out_.add('>');
        out_.addEscaped(element.text);
        for (const OutputElement& child : element.children()) writeElement(child);
        out_.add("</");
        out_.add(element.name());
        out_.add('>');
    }

    // " xmlns:xlink=…" for each namespace that was used.
    QByteArray declarations() const {
        TextWriter out(0);
        const auto declare = [&out](const Namespace& one) {
            out.add(" xmlns:");
            out.add(one.prefix);
            out.add("=\"");
            out.addEscaped(one.uri);
            out.add('"');
        };
        for (size_t i = 0; i < namespaces_.size(); ++i) {
            if (isUsed_[i] && namespaces_[i].prefix != "xlink") declare(namespaces_[i]);
        }
        if (usesXlink_) declare({"xlink", "http://www.w3.org/1999/xlink"});
        return out.take();
    }

  private:
    void use(std::string_view prefix) {
        if (prefix == "xlink") usesXlink_ = true;  // also where the source does not have it
        for (size_t i = 0; i < namespaces_.size(); ++i) {
            if (namespaces_[i].prefix == prefix) isUsed_[i] = true;
        }
    }

    const std::vector<Namespace>& namespaces_;
    std::vector<bool> isUsed_;
    bool usesXlink_ = false;
    TextWriter& out_;
};

}  // namespace

QByteArray writeDocument(const OutputElement& root, const SourceDocument& source) {
    // textSize() counts no blanks, quotation marks and the like: where they are more, the text grows.
    TextWriter out(root.textSize() * 5 / 4 + 1024);
    out.add(kHead);
    out.add(kRootOpening);
    const size_t rootName = out.size();
    ElementWriter writer(source.namespaces(), out);
    writer.writeAttributes(root);
    writer.writeContent(root);
    out.add('\n');
    const QByteArray declarations = writer.declarations();
    QByteArray document = out.take();
    if (!declarations.isEmpty()) document.insert(decltype(document.size())(rootName), declarations);
    return document;
}

}  // namespace tznormalize
