// A record is  g=id{1}parent{root}attributes{id="a" class="b"};  with "attributes{...}" left out when the
// group has none. Tested by tests/export/GroupRecordsTest.cpp.
#include "export/GroupRecords.h"

#include <QStringView>
#include <algorithm>

#include "svg/tree/DocumentLimits.h"
#include "svg/tree/XmlEntities.h"

namespace tzsvg {
namespace {

// The character that "#38;", "#x26;" or "amp;" stands for; nothing for others.
std::optional<QString> referenced(QStringView reference) {
    if (const XmlEntity* const entity = xmlEntityAt(reference)) return QString(QChar(entity->character));
    if (!reference.startsWith(u'#')) return std::nullopt;
    const bool hexadecimal = reference.mid(1).startsWith(u'x');
    const QStringView number = reference.mid(hexadecimal ? 2 : 1).chopped(1);
    bool ok = false;
    const uint code = number.toString().toUInt(&ok, hexadecimal ? 16 : 10);
    if (!ok || code == 0 || code > QChar::LastValidCodePoint || QChar::isSurrogate(code)) return std::nullopt;
    const auto character = static_cast<char32_t>(code);
    return QString::fromUcs4(&character, 1);
}

// Turns character references and the five predefined entities into what they stand for; others stay.
QString unescaped(QStringView text) {
    QString result;
    while (true) {
        const auto start = text.indexOf(u'&');
        result.append(text.left(start < 0 ? text.size() : start).toString());
        if (start < 0) return result;
        text = text.mid(start + 1);
        constexpr int kLongestReference = 10;  // "#x10FFFF;"
        const auto end = text.left(kLongestReference).indexOf(u';');
        const auto character = end < 0 ? std::nullopt : referenced(text.left(end + 1));
        result.append(character ? *character : QStringLiteral("&"));
        if (character) text = text.mid(end + 1);
    }
}

// White space as XML has it. Any other, such as a no-break space, is part of a name to Qt's reader.
bool isSpace(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

bool isNameCharacter(QChar c) {
    static constexpr QStringView kExcluded = u"<>&'\"/=";
    return !isSpace(c) && !kExcluded.contains(c);
}

// One pass over the text; every step moves on or fails.
class RecordReader {
  public:
    explicit RecordReader(QStringView text) : rest_(text) {}

    bool atEnd() {
        skipSpace();
        return rest_.isEmpty();
    }

    bool read(GroupRecord& record) {
        QStringView number;
        QStringView parent;
        if (!consume(u"g=id{") || !consumeUpTo(u'}', number) || !consume(u"parent{") ||
            !consumeUpTo(u'}', parent))
            return false;
        bool ok = false;
        record.number = number.toString().toUInt(&ok, 10);
        if (ok && parent != u"root") record.parent = parent.toString().toUInt(&ok, 10);
        if (!ok) return false;
        if (consume(u"attributes{")) return readAttributes(record);
        return consume(u";");
    }

  private:
    // Up to and including the closing "};". No name starts with ";", so that "}" at the start of a name is
    // never taken for the end.
    bool readAttributes(GroupRecord& record) {
        for (skipSpace(); !consume(u"};"); skipSpace()) {
            QStringView name;
            QStringView value;
            if (!consumeUpTo(u'=', name)) return false;
            while (!name.isEmpty() && isSpace(name.back())) name.chop(1);
            if (name.isEmpty() || !std::all_of(name.begin(), name.end(), isNameCharacter)) return false;
            skipSpace();
            if (!consume(u"\"") || !consumeUpTo(u'"', value)) return false;
            if (record.attributes.size() >= kMaxAttributes) return false;
            record.attributes.push_back({name.toString(), unescaped(value)});
        }
        return true;
    }

    void skipSpace() {
        while (!rest_.isEmpty() && isSpace(rest_.front())) rest_ = rest_.mid(1);
    }

    bool consume(QStringView what) {
        if (!rest_.startsWith(what)) return false;
        rest_ = rest_.mid(what.size());
        return true;
    }

    bool consumeUpTo(QChar end, QStringView& before) {
        const auto found = rest_.indexOf(end);
        if (found < 0) return false;
        before = rest_.left(found);
        rest_ = rest_.mid(found + 1);
        return true;
    }

    QStringView rest_;
};

}  // namespace

bool readGroupRecords(const QString& text, std::vector<GroupRecord>& records) {
    records.clear();
    for (RecordReader reader{QStringView(text)}; !reader.atEnd();) {
        GroupRecord record;
        if (!reader.read(record)) {
            records.clear();
            return false;
        }
        records.push_back(std::move(record));
    }
    return true;
}

}  // namespace tzsvg
