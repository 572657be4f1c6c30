#include "export/DocumentBlocks.h"

#include <QStringList>
#include <algorithm>

#include "hostsdk/CTzSceneSaver.h"
#include "svg/RoundTripNames.h"
#include "svg/tree/XmlDocument.h"

namespace tzsvg {
namespace {

// A stored text with its one "svg" element, which may stand at any place: null when there is none or more
// than one, or the text is not well-formed or beyond the limits of svg/tree/DocumentLimits.h.
struct ParsedSvg {
    explicit ParsedSvg(const QString& xml) {
        if (!document.read(xml)) return;
        for (const XmlNode* node = document.top().nextBelow(document.top()); node;
             node = node->nextBelow(document.top())) {
            if (node->element() != Element::kSvg) continue;
            if (svg) {
                svg = nullptr;
                return;
            }
            svg = node;
        }
    }
    XmlDocument document;
    const XmlNode* svg = nullptr;
};

// A sequence of nodes without a common root: they are the children of the element.
QString wrapped(const QString& fragment) {
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?><svg>") + fragment +
           QStringLiteral("</svg>");
}

// One kind of text of all packages: those that are not empty, each once.
QStringList textsOf(const PackageTexts& packages, QString StoredTexts::*kind) {
    QStringList texts;
    for (const StoredTexts* const package : packages) {
        const QString& text = package->*kind;
        if (!text.isEmpty() && !texts.contains(text)) texts.append(text);
    }
    return texts;
}

void addNamespaces(const XmlNode& from, SavedAttributes& to) {
    for (const XmlAttribute& attribute : from) {
        const QString& name = attribute.name->text;
        const bool declares = name == QLatin1String("xmlns") || name.startsWith(QLatin1String("xmlns:"));
        if (declares && !to.has(name)) to.set(name, attribute.value.toString());
    }
}

}  // namespace

std::optional<StoredTexts> readStoredTexts(const CTzSceneSaver& saver) {
    bool found = false;
    const auto read = [&](const char* channel) {
        std::optional<std::string> text;
        if (tzFailed(tzGate([&] { text = saver.channel(channel); }))) throw CTzError(kTzFailed);
        found = found || text;
        return text.value_or(std::string());
    };
    StoredTexts texts;
    texts.doctype = read(kChannelDoctype);
    texts.root = QString::fromStdString(read(kChannelRoot));
    texts.definitions = QString::fromStdString(read(kChannelDefinitions));
    texts.clipPaths = QString::fromStdString(read(kChannelClipPaths));
    texts.groups = QString::fromStdString(read(kChannelGroups));
    texts.illustratorData = QString::fromStdString(read(kChannelIllustrator));
    if (!found) return std::nullopt;
    return texts;
}

bool addRoot(OutputDocument& document, const PackageTexts& packages, OutputElement*& root) {
    const QStringList texts = textsOf(packages, &StoredTexts::root);
    if (texts.isEmpty()) {
        root = &document.makeElement(QStringLiteral("svg"));
        root->attributes().set(QStringLiteral("xmlns"), QStringLiteral("http://www.w3.org/2000/svg"));
        root->attributes().set(QStringLiteral("xmlns:xlink"), QStringLiteral("http://www.w3.org/1999/xlink"));
        return true;
    }
    const ParsedSvg stored(texts.first());
    if (!stored.svg) return false;
    root = &document.makeElement(stored.svg->name());
    root->attributes() = SavedAttributes(*stored.svg);
    root->addChildrenOf(*stored.svg);
    for (const QString& text : texts.mid(1)) {
        const ParsedSvg later(text);
        if (later.svg) addNamespaces(*later.svg, root->attributes());
    }
    return true;
}

bool addDefinitions(OutputDocument& document, const PackageTexts& packages, OutputElement& root) {
    const QStringList texts = textsOf(packages, &StoredTexts::definitions);
    if (texts.isEmpty()) return true;
    OutputElement& definitions = document.makeElement(QStringLiteral("defs"));
    for (const QString& text : texts) {
        const ParsedSvg fragment(wrapped(text));
        if (!fragment.svg || !fragment.svg->firstChild()) return false;
        definitions.addChildrenOf(*fragment.svg);
    }
    root.addComment(QStringLiteral(" Definitions block "));
    root.children().emplace_back(&definitions);
    return true;
}

bool addClipPaths(const PackageTexts& packages, OutputElement& root) {
    const QStringList texts = textsOf(packages, &StoredTexts::clipPaths);
    if (texts.isEmpty()) return true;
    root.addComment(QStringLiteral(" Clip paths block "));
    for (const QString& text : texts) {
        const ParsedSvg fragment(wrapped(text));
        if (!fragment.svg || !fragment.svg->firstChild()) return false;
        // Into the root itself, unlike the definitions: a clip path inside "defs" stands there already.
        root.addChildrenOf(*fragment.svg);
    }
    return true;
}

bool addIllustratorData(const PackageTexts& packages, OutputElement& root) {
    QStringList texts = textsOf(packages, &StoredTexts::illustratorData);
    const auto isBlank = [](const QString& text) { return text.trimmed().isEmpty(); };
    texts.erase(std::remove_if(texts.begin(), texts.end(), isBlank), texts.end());
    if (texts.isEmpty()) return true;
    texts.prepend(
        QStringLiteral("<foreignObject "
                       "requiredExtensions=\"http://ns.adobe.com/AdobeIllustrator/10.0/\" "
                       "x=\"0\" y=\"0\" width=\"1\" height=\"1\">"
                       "<i:pgfRef xlink:href=\"#adobe_illustrator_pgf\"/></foreignObject>"));
    for (const QString& text : texts) {
        const ParsedSvg fragment(wrapped(text));
        if (!fragment.svg) return false;
        root.addChildrenOf(*fragment.svg);
    }
    return true;
}

}  // namespace tzsvg
