// A quick reader for the texts that nearly all drawings are: elements, texts, comments, character data, a
// document type without an internal subset. What is well-formed is Qt's reader to say: at anything
// that is not plainly so, and at the limits of svg/tree/DocumentLimits.h, this one gives up, and
// XmlDocument takes Qt's from the start. Where it does not give up, both say the same; Qt's
// takes several times as long, since it appends texts character by character.
// XmlDocument/equalsTheToolkitsWithPlainTexts compares them.
#pragma once

#include <QStringView>
#include <QXmlStreamReader>
#include <deque>
#include <vector>

namespace tzsvg {

// The part of QXmlStreamReader, without namespaces, that XmlDocument needs. Views are valid until the next
// token; those of a text without references and tabs as long as the text.
class PlainXmlReader {
  public:
    struct Attribute {
        QStringView name;
        QStringView text;
        QStringView qualifiedName() const { return name; }
        QStringView value() const { return text; }
    };

    // Text with lines joined: a line break is not plain.
    explicit PlainXmlReader(QStringView xml) : xml_(xml) {}

    bool atEnd() const { return isDone_; }
    QXmlStreamReader::TokenType readNext();

    // Whether it gave up.
    bool hasError() const { return gaveUp_; }

    QStringView documentVersion() const { return text_; }
    QStringView qualifiedName() const { return open_.back(); }
    const std::vector<Attribute>& attributes() const { return attributes_; }
    QStringView text() const { return text_; }
    bool isCDATA() const { return isCharacterData_; }
    bool isWhitespace() const { return isBlank_; }
    qsizetype characterOffset() const { return position_; }
    static int lineNumber() { return 1; }

  private:
    using Token = QXmlStreamReader::TokenType;

    Token giveUp();
    Token readDeclaration();
    Token readDocumentType();
    Token readComment();
    Token readCharacterData();
    Token readStartTag();
    Token readEndTag();
    Token readText();

    bool readSetting(QStringView name, QStringView& value);
    bool readAttribute();
    bool isNameTaken(QStringView name) const;
    QStringView readName();
    QStringView readQuoted();
    bool readUpTo(QStringView end);
    static bool unescape(QStringView raw, QString& text);
    bool skipBlanks();
    bool skip(QStringView what);
    char16_t peek() const { return position_ < xml_.size() ? xml_.utf16()[position_] : u'\0'; }

    const QStringView xml_;
    qsizetype position_ = 0;
    bool isDone_ = false;
    bool gaveUp_ = false;
    bool sawRoot_ = false;
    bool sawDocumentType_ = false;
    bool closesAtOnce_ = false;      // the tag that was read is an element's end, too
    std::vector<QStringView> open_;  // names of the elements that are open
    std::vector<Attribute> attributes_;
    std::deque<QString> unescaped_;  // values of the tag's attributes that had references or tabs
    QString unescapedText_;
    QStringView text_;
    bool isCharacterData_ = false;
    bool isBlank_ = false;
};

}  // namespace tzsvg
