#include "tests/common/TestFolder.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

TestFolder::TestFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "tzhost-test-XXXXXX").native();
    path_ = mkdtemp(name.data());
}

TestFolder::~TestFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
}

std::filesystem::path TestFolder::write(const std::string& name, const std::string& text) const {
    std::ofstream(path_ / name, std::ios::binary) << text;
    return path_ / name;
}

std::string TestFolder::read(const std::string& name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> TestFolder::names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

std::string repeated(const std::string& text, size_t times) {
    std::string all;
    while (times-- > 0) all += text;
    return all;
}
