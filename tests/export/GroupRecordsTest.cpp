// The reader of group records.
#include "export/GroupRecords.h"

#include <gtest/gtest.h>

#include <QStringList>

#include "export/OutputGroups.h"
#include "tests/common/Table.h"

namespace tzsvg {
namespace {

// The records as one text: number, parent, name=value...
QString told(const std::vector<GroupRecord>& records) {
    QStringList lines;
    for (const GroupRecord& record : records) {
        QString line = QString::number(record.number) + u'<' +
                       (record.parent ? QString::number(*record.parent) : QStringLiteral("root"));
        for (const auto& [name, value] : record.attributes) line += u',' + name + u'=' + value;
        lines.append(line);
    }
    return lines.join(u'\n');
}

TEST(GroupRecords, reads) {
    for (const auto& row : readTable("export/group-records.txt", 2)) {
        std::vector<GroupRecord> records;
        EXPECT_TRUE(readGroupRecords(QString::fromStdString(row[0]), records)) << row[0];
        EXPECT_EQ(told(records).toStdString(), row[1]) << row[0];
    }
}

TEST(GroupRecords, refuses) {
    for (const char* const text :
         {"x", "g=id{1}parent{root}", "g=id{1}parent{root}attributes{id=\"a\"}",
          "g=id{1}parent{root}attributes{id=\"a\";", "g=id{1}parent{root}attributes{id=\"a};",
          "g=id{1}parent{root}attributes{id=a};", "g=id{1}parent{root}attributes{=\"a\"};",
          "g=id{1}parent{root}attributes{a b=\"a\"};", "g=id{1}parent{root}attributes{<=\"a\"};",
          "g=id{}parent{root};", "g=id{x}parent{root};", "g=id{1}parent{};", "g=id{-1}parent{root};",
          "g=id{4294967296}parent{root};", "g=id{1};", "g=id{1}parent{root};junk"}) {
        std::vector<GroupRecord> records(1);
        EXPECT_FALSE(readGroupRecords(QString::fromUtf8(text), records)) << text;
        EXPECT_TRUE(records.empty()) << text;
    }
    QString many = QStringLiteral("g=id{1}parent{root}attributes{");
    for (int i = 0; i < 4097; ++i) many += QStringLiteral("a%1=\"\"").arg(i);
    std::vector<GroupRecord> records;
    EXPECT_FALSE(readGroupRecords(many + QStringLiteral("};"), records));
}

// Groups in one another: `count` of them, the first under the root.
QString nested(int count) {
    QString text = QStringLiteral("g=id{1}parent{root};");
    for (int i = 2; i <= count; ++i) text += QStringLiteral("g=id{%1}parent{%2};").arg(i).arg(i - 1);
    return text;
}

TEST(OutputGroups, refuses) {
    struct Row {
        const char* name;
        QString text;
        bool good;
    };
    for (const Row& row : std::vector<Row>{
             {"as deep as may be", nested(255), true},
             {"too deep", nested(256), false},
             {"number twice", QStringLiteral("g=id{1}parent{root};g=id{1}parent{root};"), false},
             {"parent behind child", QStringLiteral("g=id{2}parent{1};g=id{1}parent{root};"), false},
             {"own parent", QStringLiteral("g=id{1}parent{1};"), false},
             {"cycle", QStringLiteral("g=id{1}parent{2};g=id{2}parent{1};"), false},
         }) {
        OutputDocument document;
        OutputElement& root = document.makeElement(QStringLiteral("svg"));
        OutputGroups groups;
        EXPECT_EQ(groups.build(row.text, document, root), row.good) << row.name;
    }
}

}  // namespace
}  // namespace tzsvg
