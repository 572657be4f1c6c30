// A file in memory, for loaders that take a file name when there is only text. Used by Drawing.
#pragma once

#include <string>
#include <string_view>

namespace tzhost {

// It exists as long as this object, and at most as long as the process. Its name is valid within the process
// only; loaders may open it any number of times.
class PrivateFile {
  public:
    // Throws std::system_error, as replace() does.
    explicit PrivateFile(std::string_view content);
    ~PrivateFile();
    PrivateFile(const PrivateFile&) = delete;
    PrivateFile& operator=(const PrivateFile&) = delete;

    // "/proc/self/fd/7".
    const std::string& name() const { return name_; }

    // Replaces the content atomically: whoever has the file open keeps reading the former content.
    void replace(std::string_view content);

  private:
    int descriptor_;
    std::string name_;
};

}  // namespace tzhost
