// A folder of its own for a test, gone with it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

class TestFolder {
  public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

    std::filesystem::path write(const std::string& name, const std::string& text) const;
    std::string read(const std::string& name) const;

    // All names, hidden ones too, in order.
    std::vector<std::string> names() const;

  private:
    std::filesystem::path path_;
};

// For documents that a test makes long.
std::string repeated(const std::string& text, size_t times);
