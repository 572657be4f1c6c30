// A file in memory that nobody else finds: what a loader is handed when it takes a file's name and there is
// only text. Used by Drawing.
#pragma once

#include <string>
#include <string_view>

namespace tzhost {

// Gone with this object, or with the process, however that ends. It has a name only within the process: the
// loaders of a module open it by that name, as often as they want.
class PrivateFile {
  public:
    // Throws std::system_error, as replace() does.
    explicit PrivateFile(std::string_view content);
    ~PrivateFile();
    PrivateFile(const PrivateFile&) = delete;
    PrivateFile& operator=(const PrivateFile&) = delete;

    // "/proc/self/fd/7".
    const std::string& name() const { return name_; }

    // Gives the name to another file of that content at one stroke: who has the former one open reads on in
    // it.
    void replace(std::string_view content);

  private:
    int descriptor_;
    std::string name_;
};

}  // namespace tzhost
