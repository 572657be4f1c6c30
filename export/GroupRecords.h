// The reader of the group records in the channel "groupdefs". Called by OutputGroups.
#pragma once

#include <QPair>
#include <QString>
#include <optional>
#include <vector>

namespace tzsvg {

struct GroupRecord {
    unsigned number = 0;
    std::optional<unsigned> parent;                   // nothing: the root
    std::vector<QPair<QString, QString>> attributes;  // names as written, values unescaped
};

// Reads the records in order. White space between records and between attributes is skipped; "}" and ";" may
// stand inside a value, and "}" inside a name. False, with no records, when one is malformed or has more
// attributes than an element may.
bool readGroupRecords(const QString& text, std::vector<GroupRecord>& records);

}  // namespace tzsvg
