// See the header.
#include "export/DocumentBlocks.h"

#include <QStringList>
#include <algorithm>

#include "export/Fragments.h"

namespace tzsvg {
namespace {

// One kind of text of all packages: those that are not empty, each once.
QStringList textsOf(const PackageTexts& packages, QString StoredTexts::*kind) {
    QStringList texts;
    for (const StoredTexts* const package : packages) {
        const QString& text = package->*kind;
        if (!text.isEmpty() && !texts.contains(text)) texts.append(text);
    }
    return texts;
}

void addNamespaces(const QDomElement& from, QDomElement to) {
    const QDomNamedNodeMap attributes = from.attributes();
    for (int i = 0; i < attributes.size(); ++i) {
        const QDomNode attribute = attributes.item(i);
        const QString name = attribute.nodeName();
        const bool declares = name == QLatin1String("xmlns") || name.startsWith(QLatin1String("xmlns:"));
        if (declares && !to.hasAttribute(name)) {
            to.setAttribute(name, attribute.nodeValue());
        }
    }
}

QDomElement newRoot(QDomDocument& document) {
    QDomElement root = document.createElement(QStringLiteral("svg"));
    root.setAttribute(QStringLiteral("xmlns"), QStringLiteral("http://www.w3.org/2000/svg"));
    root.setAttribute(QStringLiteral("xmlns:xlink"), QStringLiteral("http://www.w3.org/1999/xlink"));
    return root;
}

}  // namespace

ErrorState addRoot(QDomDocument& document, const PackageTexts& packages, QDomElement& root) {
    const QStringList texts = textsOf(packages, &StoredTexts::root);
    if (texts.isEmpty()) {
        root = newRoot(document);
        document.appendChild(root);
        return ErrorState::kNone;
    }
    const ParsedSvg stored = parseSvg(texts.first());
    if (stored.svg.isNull()) return ErrorState::kRoot;
    root = stored.svg;
    document.appendChild(root);
    for (const QString& text : texts.mid(1)) addNamespaces(parseSvg(text).svg, root);
    return ErrorState::kNone;
}

ErrorState addDefinitions(QDomDocument& document, const PackageTexts& packages, QDomElement root) {
    const QStringList texts = textsOf(packages, &StoredTexts::definitions);
    if (texts.isEmpty()) return ErrorState::kNone;
    QDomElement definitions = document.createElement(QStringLiteral("defs"));
    for (const QString& text : texts) {
        const ParsedSvg fragment = parseFragment(text);
        if (!fragment.svg.hasChildNodes()) return ErrorState::kDefinitions;
        moveChildren(fragment.svg, definitions);
    }
    root.appendChild(document.createComment(QStringLiteral(" Definitions block ")));
    root.appendChild(definitions);
    return ErrorState::kNone;
}

ErrorState addClipPaths(QDomDocument& document, const PackageTexts& packages, QDomElement root) {
    const QStringList texts = textsOf(packages, &StoredTexts::clipPaths);
    if (texts.isEmpty()) return ErrorState::kNone;
    root.appendChild(document.createComment(QStringLiteral(" Clip paths block ")));
    for (const QString& text : texts) {
        const ParsedSvg fragment = parseFragment(text);
        if (!fragment.svg.hasChildNodes()) return ErrorState::kClipPaths;
        // Into the root itself, unlike the definitions: a clip path inside "defs" stands there already.
        moveChildren(fragment.svg, root);
    }
    return ErrorState::kNone;
}

ErrorState addIllustratorData(const PackageTexts& packages, const QDomElement& root) {
    QStringList texts = textsOf(packages, &StoredTexts::illustratorData);
    const auto isBlank = [](const QString& text) { return text.trimmed().isEmpty(); };
    texts.erase(std::remove_if(texts.begin(), texts.end(), isBlank), texts.end());
    if (texts.isEmpty()) return ErrorState::kNone;
    texts.prepend(
        QStringLiteral("<foreignObject "
                       "requiredExtensions=\"http://ns.adobe.com/AdobeIllustrator/10.0/\" "
                       "x=\"0\" y=\"0\" width=\"1\" height=\"1\">"
                       "<i:pgfRef xlink:href=\"#adobe_illustrator_pgf\"/></foreignObject>"));
    for (const QString& text : texts) {
        const ParsedSvg fragment = parseFragment(text);
        if (fragment.svg.isNull()) return ErrorState::kIllustrator;
        moveChildren(fragment.svg, root);
    }
    return ErrorState::kNone;
}

}  // namespace tzsvg
