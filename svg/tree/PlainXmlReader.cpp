#include "svg/tree/PlainXmlReader.h"

#include <algorithm>

#include "svg/tree/DocumentLimits.h"
#include "svg/tree/XmlEntities.h"

namespace tzsvg {
namespace {

bool isLetter(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isNameStart(char16_t c) {
    return isLetter(c) || c == u'_';
}

bool isNamePart(char16_t c) {
    return isNameStart(c) || (c >= u'0' && c <= u'9') || c == u'-' || c == u'.';
}

bool isEncodingName(QStringView text) {
    const auto isPart = [](QChar c) { return isNamePart(c.unicode()); };
    return !text.isEmpty() && isLetter(text.front().unicode()) &&
           std::all_of(text.begin(), text.end(), isPart);
}

// What an identifier of a document type may consist of.
bool isPublicIdentifier(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) {
        return isNamePart(c.unicode()) || QStringView(u" '()+,/:=?;!*#@$%").contains(c);
    });
}

// Qt 5.15 refuses longer ones.
constexpr qsizetype kMaxPlainName = 4096;

}  // namespace

// Which kinds of characters a text has.
struct PlainXmlReader::TextLook {
    explicit TextLook(QStringView text);

    bool isPlain;
    bool hasTab;
    bool hasBreak;
    bool hasReference;
    bool hasTag;
};

// The loop has no early exit, so that the compiler can vectorise it.
PlainXmlReader::TextLook::TextLook(QStringView text) {
    uint16_t other = 0;
    uint16_t tabs = 0;
    uint16_t breaks = 0;
    uint16_t references = 0;
    uint16_t tags = 0;
    const char16_t* const characters = text.utf16();
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = characters[i];
        // Control characters, surrogates and what lies beyond them are left to Qt.
        const bool isPrintable = static_cast<uint16_t>(c - 0x20) < 0x7F - 0x20;
        const bool isBeyondAscii = static_cast<uint16_t>(c - 0xA0) < 0xD800 - 0xA0;
        const bool isTab = c == u'\t';
        const bool isBreak = c == u'\n';
        other |= static_cast<uint16_t>(!(isPrintable | isBeyondAscii | isTab | isBreak));
        tabs |= static_cast<uint16_t>(isTab);
        breaks |= static_cast<uint16_t>(isBreak);
        references |= static_cast<uint16_t>(c == u'&');
        tags |= static_cast<uint16_t>(c == u'<');
    }
    isPlain = other == 0;
    hasTab = tabs != 0;
    hasBreak = breaks != 0;
    hasReference = references != 0;
    hasTag = tags != 0;
}

bool PlainXmlReader::isPlain(const TextLook& look) const {
    return look.isPlain && (takesBreaks_ || !look.hasBreak);
}

QXmlStreamReader::TokenType PlainXmlReader::readNext() {
    if (closesAtOnce_) {
        closesAtOnce_ = false;
        open_.pop_back();
        return Token::EndElement;
    }
    isCharacterData_ = false;
    if (position_ == 0 && skip(u"<?xml")) return readDeclaration();
    if (position_ == xml_.size()) {
        if (!open_.empty() || !sawRoot_) return giveUp();
        isDone_ = true;
        return Token::EndDocument;
    }
    if (peek() != u'<') return readText();
    ++position_;
    if (peek() == u'/') return readEndTag();
    if (peek() != u'!') return readStartTag();
    if (skip(u"!--")) return readComment();
    if (skip(u"![CDATA[")) return readCharacterData();
    if (skip(u"!DOCTYPE")) return readDocumentType();
    return giveUp();
}

QXmlStreamReader::TokenType PlainXmlReader::giveUp() {
    isDone_ = true;
    gaveUp_ = true;
    return Token::Invalid;
}

QXmlStreamReader::TokenType PlainXmlReader::readDeclaration() {
    QStringView standalone = u"no";
    const bool reads = readSetting(u"version", text_) && readSetting(u"encoding", encoding_) &&
                       readSetting(u"standalone", standalone);
    if (!reads || text_ != u"1.0" || !isEncodingName(encoding_)) return giveUp();
    if (standalone != u"yes" && standalone != u"no") return giveUp();
    skipBlanks();
    return skip(u"?>") ? Token::StartDocument : giveUp();
}

// One setting of the declaration. An absent one leaves the value as it was; false for a broken one.
bool PlainXmlReader::readSetting(QStringView name, QStringView& value) {
    const auto start = position_;
    if (!skipBlanks() || !skip(name)) {
        position_ = start;
        return true;
    }
    if (!skip(u"=")) return false;
    value = readQuoted();
    return !value.isNull();
}

QXmlStreamReader::TokenType PlainXmlReader::readDocumentType() {
    if (sawRoot_ || sawDocumentType_) return giveUp();
    sawDocumentType_ = true;
    if (!skipBlanks() || readName().isEmpty()) return giveUp();
    if (skipBlanks() && skip(u"PUBLIC")) {
        if (!skipBlanks()) return giveUp();
        const QStringView identifier = readQuoted();
        if (identifier.isNull() || !isPublicIdentifier(identifier) || !skipBlanks()) return giveUp();
        const QStringView location = readQuoted();
        if (location.isNull()) return giveUp();
        const TextLook look(location);
        if (!look.isPlain || look.hasTab || look.hasBreak || look.hasReference || look.hasTag)
            return giveUp();
        skipBlanks();
    }
    return skip(u">") ? Token::DTD : giveUp();
}

QXmlStreamReader::TokenType PlainXmlReader::readComment() {
    if (!readUpTo(u"--") || !skip(u">")) return giveUp();
    return Token::Comment;
}

QXmlStreamReader::TokenType PlainXmlReader::readCharacterData() {
    if (open_.empty() || !readUpTo(u"]]>")) return giveUp();
    isCharacterData_ = true;
    return Token::Characters;
}

QXmlStreamReader::TokenType PlainXmlReader::readStartTag() {
    attributes_.clear();
    unescaped_.clear();
    tag_ = position_ - 1;
    const QStringView name = readName();
    if (name.isEmpty() || (open_.empty() && sawRoot_) || open_.size() == kMaxElementDepth) return giveUp();
    sawRoot_ = true;
    open_.push_back(name);
    while (skipBlanks() && isNameStart(peek())) {
        if (!readAttribute()) return giveUp();
    }
    closesAtOnce_ = skip(u"/");
    return skip(u">") ? Token::StartElement : giveUp();
}

bool PlainXmlReader::readAttribute() {
    const QStringView name = readName();
    // With so few on each element no document passes the limit on pairs: they need not be counted.
    if (name.isEmpty() || isNameTaken(name) || attributes_.size() == kManyAttributes) return false;
    skipBlanks();
    if (!skip(u"=")) return false;
    skipBlanks();
    QStringView value = readQuoted();
    if (value.isNull()) return false;
    const TextLook look(value);
    if (!isPlain(look) || look.hasTag) return false;
    if (look.hasReference || look.hasTab || look.hasBreak) {
        QString& text = unescaped_.emplace_back();
        if (!unescape(value, text)) return false;
        value = text.replace(u'\t', u' ').replace(u'\n', u' ');
    }
    attributes_.push_back({name, value});
    return true;
}

bool PlainXmlReader::isNameTaken(QStringView name) const {
    return std::any_of(attributes_.begin(), attributes_.end(),
                       [&](const Attribute& other) { return other.name == name; });
}

QXmlStreamReader::TokenType PlainXmlReader::readEndTag() {
    ++position_;
    if (open_.empty() || !skip(open_.back())) return giveUp();
    open_.pop_back();
    skipBlanks();
    return skip(u">") ? Token::EndElement : giveUp();
}

QXmlStreamReader::TokenType PlainXmlReader::readText() {
    const auto start = position_;
    skipBlanks();
    isBlank_ = position_ == xml_.size() || peek() == u'<';
    if (!isBlank_) {
        const auto end = xml_.indexOf(u'<', position_);
        if (end < 0 || open_.empty()) return giveUp();
        position_ = end;
    }
    text_ = xml_.mid(start, position_ - start);
    if (isBlank_) return Token::Characters;
    const TextLook look(text_);
    if (!isPlain(look) || text_.contains(u"]]>")) return giveUp();
    if (look.hasReference) {
        if (!unescape(text_, unescapedText_)) return giveUp();
        text_ = unescapedText_;
    }
    return Token::Characters;
}

// An ASCII name, of a prefix and a name when it has a colon. Empty when there is none.
QStringView PlainXmlReader::readName() {
    const auto start = position_;
    for (bool isPrefixed = false;; isPrefixed = true) {
        if (!isNameStart(peek())) return {};
        while (isNamePart(peek())) ++position_;
        if (position_ - start > kMaxPlainName) return {};
        if (isPrefixed || peek() != u':') return xml_.mid(start, position_ - start);
        ++position_;
    }
}

// What stands between quotes, whatever it is; null when there are none.
QStringView PlainXmlReader::readQuoted() {
    const char16_t quote = peek();
    if (quote != u'"' && quote != u'\'') return {};
    const auto start = position_ + 1;
    const auto end = xml_.indexOf(quote, start);
    if (end < 0) return {};
    position_ = end + 1;
    return xml_.mid(start, end - start);
}

// Takes what stands before an end for the text, and skips the end.
bool PlainXmlReader::readUpTo(QStringView end) {
    const auto found = xml_.indexOf(end, position_);
    if (found < 0) return false;
    text_ = xml_.mid(position_, found - position_);
    position_ = found + end.size();
    return isPlain(TextLook(text_));
}

// Replaces references to the five characters that every document may name. False when there are others.
bool PlainXmlReader::unescape(QStringView raw, QString& text) {
    text.clear();
    while (true) {
        const auto at = raw.indexOf(u'&');
        if (at < 0) {
            text += raw;
            return true;
        }
        text += raw.left(at);
        raw = raw.mid(at + 1);
        const XmlEntity* const entity = xmlEntityAt(raw);
        if (!entity) return false;
        text += QChar(entity->character);
        raw = raw.mid(entity->reference.size());
    }
}

bool PlainXmlReader::skipBlanks() {
    const auto start = position_;
    while (isBlank(peek())) ++position_;
    return position_ > start;
}

bool PlainXmlReader::skip(QStringView what) {
    if (!xml_.mid(position_).startsWith(what)) return false;
    position_ += what.size();
    return true;
}

}  // namespace tzsvg
