#include "import/Recognition.h"

#include <QScopeGuard>
#include <algorithm>

#include "svg/tree/DocumentText.h"

namespace tzsvg {

namespace {

// As QString::remove(), but whole lines are moved, not single characters.
void removeAll(QString& text, QChar unwanted) {
    auto found = text.indexOf(unwanted);
    if (found < 0) return;
    QChar* const characters = text.data();
    QChar* end = characters + found;
    while (found >= 0) {
        const auto from = found + 1;
        found = text.indexOf(unwanted, from);
        end = std::move(characters + from, characters + (found < 0 ? text.size() : found), end);
    }
    text.truncate(end - characters);
}

}  // namespace

QString decodeJoined(const QByteArray& bytes) {
    QString text = decodeDocument(bytes);
    // Lines are joined with nothing between them: the text content of the document carries no line break of
    // the file, and a name or path data broken over two lines becomes one. Meant so, and every carriage
    // return goes with the line ends. Recognition/joinsLinesOfText pins it.
    removeAll(text, u'\n');
    removeAll(text, u'\r');
    return text;
}

void SvgDocument::clear() {
    survey = {};
    tree.clear();
    textLength = 0;
}

bool readDocument(const QString& fileName, SvgDocument& document) {
    document.clear();
    auto clear = qScopeGuard([&] { document.clear(); });  // also when memory runs out
    {
        QByteArray bytes;
        if (!readFileBytes(fileName, bytes)) return false;
        const QString text = decodeJoined(bytes);
        document.textLength = text.size();
        if (!document.tree.read(text)) return false;
    }
    document.survey = DocumentSurvey(document.tree.top());
    if (document.survey.roots.size() != 1) return false;
    clear.dismiss();
    return true;
}

}  // namespace tzsvg
