#include "import/Captures.h"

#include <QDomDocument>
#include <QRegularExpression>
#include <QTextStream>
#include <algorithm>
#include <array>

#include "hostsdk/CTzError.h"
#include "svg/tree/SavedForm.h"
#include "svg/tree/XmlReader.h"

namespace tzsvg {
namespace {

// Elements one after the other as text, as long as there is room.
class ElementsText {
  public:
    explicit ElementsText(qint64 room) : room_(room) {}

    void add(const XmlNode& node) {
        saveNode(text_, node);
        if (text_.size() > room_) throw CTzError(kTzOutOfMemory);
    }
    QString text() const { return withoutLineBreaks(text_); }

  private:
    const qint64 room_;
    QString text_;
};

void addOutsideDefinitions(ElementsText& text, const DocumentSurvey::List& elements) {
    for (const XmlNode* const element : elements) {
        if (element->parent()->element() != Element::kDefinitions) text.add(*element);
    }
}

// One behind the other, without blanks between.
void writeAttributes(QTextStream& stream, const SavedAttributes& attributes) {
    if (attributes.isEmpty()) return;
    QString text;
    attributes.forEach([&](const QString& name, const QString& value) {
        // The transform is in the geometry below the group, and is never kept here.
        if (name != nameOf(Attribute::kTransform)) saveAttribute(text, name, value);
    });
    stream << "attributes{" << text << '}';
}

bool isIllustratorDocument(const XmlNode& document) {
    for (const XmlNode* node = document.firstChild(); node; node = node->nextSibling()) {
        if (node->kind() == NodeKind::kComment && node->text().contains(u"Generator: Adobe Illustrator"))
            return true;
    }
    return false;
}

void writeIllustratorEntities(QTextStream& stream) {
    struct Entity {
        const char* name;
        const char* path;
    };
    static constexpr std::array<Entity, 8> kEntities = {{
        {"ns_extend", "/Extensibility/1.0/"},
        {"ns_ai", "/AdobeIllustrator/10.0/"},
        {"ns_graphs", "/Graphs/1.0/"},
        {"ns_vars", "/Variables/1.0/"},
        {"ns_imrep", "/ImageReplacement/1.0/"},
        {"ns_sfw", "/SaveForWeb/1.0/"},
        {"ns_custom", "/GenericCustomNamespace/1.0/"},
        {"ns_adobe_xpath", "/XPath/1.0/"},
    }};
    for (const Entity& entity : kEntities) {
        stream << "<!ENTITY " << entity.name << " \"http://ns.adobe.com" << entity.path << "\">\n";
    }
}

// Entities and notations come in hash order: written by name, so that the same file gives the same text.
void saveByName(QTextStream& stream, const QDomNamedNodeMap& declarations) {
    std::vector<QDomNode> nodes;
    nodes.reserve(static_cast<size_t>(declarations.size()));
    for (int i = 0; i < declarations.size(); ++i) nodes.push_back(declarations.item(i));
    std::sort(nodes.begin(), nodes.end(),
              [](const QDomNode& a, const QDomNode& b) { return a.nodeName() < b.nodeName(); });
    for (const QDomNode& node : nodes) node.save(stream, 0);
}

}  // namespace

QString withoutLineBreaks(QString text) {
    static const QRegularExpression kBreaks(QStringLiteral("(&#xa;|&#xA;|&#xd;|&#xD;|&#x9;|\\n|\\t|\\r)"));
    return text.remove(kBreaks);
}

QString captureDefinitions(const DocumentSurvey& survey, qint64 room) {
    ElementsText text(room);
    for (const XmlNode* const definitions : survey.definitions) {
        for (const XmlNode* child = definitions->firstChild(); child; child = child->nextSibling()) {
            text.add(*child);
        }
    }
    addOutsideDefinitions(text, survey.patterns);
    addOutsideDefinitions(text, survey.linearGradients);
    addOutsideDefinitions(text, survey.radialGradients);
    return text.text();
}

QString captureClipPaths(const DocumentSurvey& survey, qint64 room) {
    ElementsText text(room);
    for (const XmlNode* const clipPath : survey.clipPaths) text.add(*clipPath);
    return text.text();
}

bool captureGroups(const DocumentSurvey& survey, GroupTable& table, QString& records) {
    records.clear();
    if (survey.groups.empty()) return true;
    if (survey.roots.size() != 1) return false;
    for (const XmlNode* const group : survey.groups) table.record(*group);

    QTextStream stream(&records);
    for (const XmlNode* const group : survey.groups) {
        const auto number = table.numberOf(*group);
        if (!number) return false;
        const XmlNode* parent = group->parent();
        while (parent && parent->element() == Element::kSwitch) parent = parent->parent();
        if (!parent) return false;
        // Groups here are definitions, kept as such; they are numbered all the same.
        if (isContainerOfDefinitions(parent->element())) continue;

        stream << "g=id{" << *number << "}parent{";
        if (parent == survey.roots.front()) {
            stream << "root";
        } else {
            const auto parentNumber = table.numberOf(*parent);
            if (!parentNumber) return false;
            stream << *parentNumber;
        }
        stream << '}';
        writeAttributes(stream, SavedAttributes(*group));
        stream << ';';
    }
    return true;
}

QString captureDoctype(const XmlDocument& document) {
    if (document.prolog().isEmpty()) return {};
    // Qt's list of declarations belongs to a document of its own, which needs an element.
    XmlReader reader(document.prolog() + QStringLiteral("<svg/>"));
    QDomDocument declared;
    if (!reader.withinLimits() || !declared.setContent(&reader.stream(), false)) throw CTzError(kTzFailed);
    const QDomDocumentType type = declared.doctype();
    QString text;
    QTextStream stream(&text);
    stream << "<!DOCTYPE " << type.name();
    // An identifier is set when Qt has one, be it empty.
    if (!type.publicId().isNull()) {
        stream << " PUBLIC \"" << type.publicId() << '"';
        if (!type.systemId().isNull()) stream << " \"" << type.systemId() << '"';
    } else if (!type.systemId().isNull()) {
        stream << " SYSTEM \"" << type.systemId() << '"';
    }
    const bool fromIllustrator = isIllustratorDocument(document.top());
    if (fromIllustrator || !type.entities().isEmpty() || !type.notations().isEmpty()) {
        stream << " [\n";
        if (fromIllustrator) writeIllustratorEntities(stream);
        saveByName(stream, type.entities());
        saveByName(stream, type.notations());
        stream << ']';
    }
    stream << ">\n";
    stream.flush();
    return text;
}

QString captureRoot(const XmlNode& root) {
    SavedAttributes attributes(root);
    for (const Attribute geometry :
         {Attribute::kX, Attribute::kY, Attribute::kWidth, Attribute::kHeight, Attribute::kViewBox}) {
        attributes.remove(nameOf(geometry));
    }
    QString text;
    saveTagOpening(text, root.name(), attributes);
    return text + QLatin1String("/>\n");
}

QString captureIllustratorData(const DocumentSurvey& survey) {
    QString text;
    for (const XmlNode* const element : survey.privateData) {
        if (element->attribute(Attribute::kId) == u"adobe_illustrator_pgf") saveNode(text, *element);
    }
    return text;
}

}  // namespace tzsvg
