// The rules are those of QDomNode::save() in Qt 5.15 and 6.4, which are the same: every element, comment and
// instruction ends its line, except where that would put a line break beside a text.
#include "svg/tree/SavedForm.h"

#include "svg/tree/XmlNode.h"

namespace tzsvg {
namespace {

// Qt 5 appends no views.
void append(QString& text, QStringView view) {
    text.append(view.data(), static_cast<int>(view.size()));
}

// Appends text with markup escaped; in values quotes, tabs and line breaks as well.
void appendEscaped(QString& text, QStringView raw, bool isValue) {
    qsizetype written = 0;
    const auto replace = [&](qsizetype at, QLatin1String by) {
        append(text, raw.mid(written, at - written));
        text.append(by);
        written = at + 1;
    };
    for (qsizetype i = 0; i < raw.size(); ++i) {
        switch (raw[i].unicode()) {
            case u'<':
                replace(i, QLatin1String("&lt;"));
                break;
            case u'&':
                replace(i, QLatin1String("&amp;"));
                break;
            case u'>':  // only where it would end character data
                if (i >= 2 && raw[i - 1] == u']' && raw[i - 2] == u']') replace(i, QLatin1String("&gt;"));
                break;
            case u'"':
                if (isValue) replace(i, QLatin1String("&quot;"));
                break;
            case u'\n':
                if (isValue) replace(i, QLatin1String("&#xa;"));
                break;
            case u'\t':
                if (isValue) replace(i, QLatin1String("&#x9;"));
                break;
            case u'\r':
                replace(i, QLatin1String("&#xd;"));
                break;
            default:
                break;
        }
    }
    append(text, raw.mid(written));
}

bool isBeforeText(const XmlNode& node) {
    return node.nextSibling() && node.nextSibling()->isText();
}

// Recursive: no document is nested deeply.
void saveElement(QString& text, const XmlNode& element) {
    saveTagOpening(text, element.name(), SavedAttributes(element));
    if (!element.firstChild()) {
        text += QLatin1String("/>");
        return;
    }
    text += u'>';
    if (!element.firstChild()->isText()) text += u'\n';
    for (const XmlNode* child = element.firstChild(); child; child = child->nextSibling()) {
        saveNode(text, *child);
    }
    text += QLatin1String("</") + element.name() + u'>';
}

}  // namespace

SavedAttributes::SavedAttributes(const XmlNode& element) {
    for (const XmlAttribute& attribute : element)
        values_.insert({attribute.name->text}, attribute.value.toString());
}

void SavedAttributes::set(const QString& name, const QString& value) {
    const auto found = values_.find({name});
    if (found == values_.end()) {
        values_.insert({name}, value);
    } else {
        *found = value;
    }
}

void saveAttribute(QString& text, const QString& name, QStringView value) {
    text += name + QLatin1String("=\"");
    appendEscaped(text, value, true);
    text += u'"';
}

void saveTagOpening(QString& text, const QString& name, const SavedAttributes& attributes) {
    text += u'<' + name;
    attributes.forEach([&](const QString& attribute, const QString& value) {
        text += u' ';
        saveAttribute(text, attribute, value);
    });
}

void saveComment(QString& text, QStringView comment) {
    text += QLatin1String("<!--");
    append(text, comment);
    if (comment.endsWith(u'-')) text += u' ';  // "--->" would be no end of a comment
    text += QLatin1String("-->");
}

void saveNode(QString& text, const XmlNode& node) {
    switch (node.kind()) {
        case NodeKind::kDocument:
            return;
        case NodeKind::kText:
            appendEscaped(text, node.text(), false);
            return;
        case NodeKind::kCharacterData:
            text += QLatin1String("<![CDATA[");
            append(text, node.text());
            text += QLatin1String("]]>");
            return;
        case NodeKind::kEntityReference:
            text += u'&' + node.name() + u';';
            return;
        case NodeKind::kInstruction:
            text += QLatin1String("<?") + node.name() + u' ';
            append(text, node.text());
            text += QLatin1String("?>\n");
            return;
        case NodeKind::kElement:
            saveElement(text, node);
            break;
        case NodeKind::kComment:
            saveComment(text, node.text());
            break;
    }
    if (!isBeforeText(node)) text += u'\n';
}

}  // namespace tzsvg
