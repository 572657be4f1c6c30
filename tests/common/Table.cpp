#include "tests/common/Table.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

std::string unescaped(const std::string& text) {
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            result += text[i];
            continue;
        }
        switch (text.at(++i)) {
            case 'n':
                result += '\n';
                break;
            case 't':
                result += '\t';
                break;
            case 'r':
                result += '\r';
                break;
            case 'x':
                result += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
                i += 2;
                break;
            case 'e':
                break;
            default:
                result += text[i];
        }
    }
    return result;
}

}  // namespace

std::vector<std::vector<std::string>> readTable(const std::string& file, size_t cells) {
    std::vector<std::vector<std::string>> rows;
    std::ifstream stream(TESTS_FOLDER "/" + file);
    for (std::string line; std::getline(stream, line);) {
        if (line.empty() || line[0] == '#') continue;
        line += " | ";
        std::vector<std::string> row;
        for (size_t start = 0, end = 0; (end = line.find(" | ", start)) != std::string::npos; start = end + 3)
            row.push_back(unescaped(line.substr(start, end - start)));
        EXPECT_EQ(row.size(), cells) << file << ": " << line;
        if (row.size() == cells) rows.push_back(row);
    }
    EXPECT_FALSE(rows.empty()) << file;
    return rows;
}
