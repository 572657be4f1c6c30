#include "normalize/write/DocumentWriter.h"

#include <cstring>
#include <string_view>

namespace tznormalize {
namespace {

constexpr char kHead[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
constexpr char kRootOpening[] = "<svg xmlns=\"http://www.w3.org/2000/svg\"";

class ElementWriter {
  public:
    explicit ElementWriter(const std::vector<Namespace>& namespaces)
        : namespaces_(namespaces), isUsed_(namespaces.size()) {}

    void writeAttributes(const OutputElement& element) {
        for (const OutputElement::Attribute& one : element.attributes()) {
            out_ += ' ';
            out_ += one.name;
            out_ += "=\"";
            escape(one.value);
            out_ += '"';
            if (const char* const colon = std::strchr(one.name, ':'))
                use({one.name, size_t(colon - one.name)});
        }
    }

    // The depth is that of the source, which is bounded.
    void writeElement(const OutputElement& element) {
        out_ += '<';
        out_ += element.name();
        writeAttributes(element);
        writeContent(element);
    }

    // From the end of the start tag to the end tag.
    void writeContent(const OutputElement& element) {
        if (element.children().empty() && element.text.empty()) {
            out_ += "/>";
            return;
        }
        out_ += '>';
        escape(element.text);
        for (const OutputElement& child : element.children()) writeElement(child);
        out_ += "</";
        out_ += element.name();
        out_ += '>';
    }

    std::string take() { return std::move(out_); }

    // " xmlns:xlink=…" for each namespace that was used.
    std::string declarations() {
        for (size_t i = 0; i < namespaces_.size(); ++i) {
            if (!isUsed_[i] || namespaces_[i].prefix == "xlink") continue;
            out_ += " xmlns:" + namespaces_[i].prefix + "=\"";
            escape(namespaces_[i].uri);
            out_ += '"';
        }
        if (usesXlink_) out_ += " xmlns:xlink=\"http://www.w3.org/1999/xlink\"";
        return take();
    }

  private:
    void use(std::string_view prefix) {
        if (prefix == "xlink") usesXlink_ = true;  // also where the source does not have it
        for (size_t i = 0; i < namespaces_.size(); ++i) {
            if (namespaces_[i].prefix == prefix) isUsed_[i] = true;
        }
    }

    // Line breaks become blanks, and characters that XML does not allow go.
    void escape(std::string_view text) {
        size_t from = 0;
        for (size_t i = 0; i < text.size(); ++i) {
            const char* instead = nullptr;
            const auto c = static_cast<unsigned char>(text[i]);
            if (c == '&') {
                instead = "&amp;";
            } else if (c == '<') {
                instead = "&lt;";
            } else if (c == '>') {
                instead = "&gt;";
            } else if (c == '"') {
                instead = "&quot;";
            } else if (c < ' ') {
                instead = c == '\n' || c == '\r' || c == '\t' ? " " : "";
            } else {
                continue;
            }
            out_.append(text, from, i - from);
            out_ += instead;
            from = i + 1;
        }
        out_.append(text, from);
    }

    const std::vector<Namespace>& namespaces_;
    std::vector<bool> isUsed_;
    bool usesXlink_ = false;
    std::string out_;
};

}  // namespace

QByteArray writeDocument(const OutputElement& root, const SourceDocument& source) {
    ElementWriter writer(source.namespaces());
    writer.writeAttributes(root);
    const std::string attributes = writer.take();
    writer.writeContent(root);
    const std::string content = writer.take();
    const std::string declarations = writer.declarations();
    QByteArray document;
    document.reserve(
        int(content.size() + attributes.size() + declarations.size() + sizeof kHead + sizeof kRootOpening));
    document.append(kHead).append(kRootOpening).append(declarations.data(), int(declarations.size()));
    document.append(attributes.data(), int(attributes.size())).append(content.data(), int(content.size()));
    return document.append('\n');
}

}  // namespace tznormalize
