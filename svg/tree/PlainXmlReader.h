// A fast XML reader for plain documents: elements, text, comments, CDATA sections, a document type without an
// internal subset, all of it plainly well-formed and within the limits of svg/tree/DocumentLimits.h. That is
// nearly every drawing. At anything else the reader gives up, and XmlDocument falls back to Qt's reader, from
// the start of the text, as does the normalizer: what is well-formed is for Qt to say. Where this reader does
// not give up, both report the same (XmlDocument/equalsQtsWithPlainTexts and SourceDocument/equalsQts compare
// them). It exists because Qt's takes several times as long: it appends text character by character.
#pragma once

#include <QStringView>
#include <QXmlStreamReader>
#include <deque>
#include <vector>

namespace tzsvg {

// Has the part of QXmlStreamReader's interface that XmlDocument needs, without namespaces. Views are valid
// until the next token.
class PlainXmlReader {
  public:
    struct Attribute {
        QStringView name;
        QStringView text;
        QStringView qualifiedName() const { return name; }
        QStringView value() const { return text; }
    };

    // Of a text that should be one line the reader gives up at a line break. In any it does at a carriage
    // return.
    enum class Lines { kOne, kMany };
    explicit PlainXmlReader(QStringView xml, Lines lines = Lines::kOne)
        : xml_(xml), takesBreaks_(lines == Lines::kMany) {}

    bool atEnd() const { return isDone_; }
    QXmlStreamReader::TokenType readNext();

    // Whether it gave up.
    bool hasError() const { return gaveUp_; }

    QStringView documentVersion() const { return text_; }
    QStringView documentEncoding() const { return encoding_; }  // UTF-8 when none is declared
    QStringView qualifiedName() const { return open_.back(); }
    const std::vector<Attribute>& attributes() const { return attributes_; }
    QStringView text() const { return text_; }
    bool isCDATA() const { return isCharacterData_; }
    bool isWhitespace() const { return isBlank_; }
    qsizetype characterOffset() const { return position_; }
    qsizetype tagOffset() const { return tag_; }  // of the "<" of a start tag
    static int lineNumber() { return 1; }

  private:
    struct TextLook;
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
    bool isPlain(const TextLook& look) const;
    bool isBlank(char16_t c) const { return c == u' ' || c == u'\t' || (c == u'\n' && takesBreaks_); }
    bool skipBlanks();
    bool skip(QStringView what);
    char16_t peek() const { return position_ < xml_.size() ? xml_.utf16()[position_] : u'\0'; }

    const QStringView xml_;
    const bool takesBreaks_;
    qsizetype position_ = 0;
    qsizetype tag_ = 0;
    bool isDone_ = false;
    bool gaveUp_ = false;
    bool sawRoot_ = false;
    bool sawDocumentType_ = false;
    bool closesAtOnce_ = false;      // the tag that was read is an element's end, too
    std::vector<QStringView> open_;  // names of the elements that are open
    std::vector<Attribute> attributes_;
    std::deque<QString>
        unescaped_;  // values of the tag's attributes that had references, tabs or line breaks
    QString unescapedText_;
    QStringView text_;
    QStringView encoding_ = u"UTF-8";
    bool isCharacterData_ = false;
    bool isBlank_ = false;
};

}  // namespace tzsvg
