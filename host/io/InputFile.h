// What is read: a file, or a text in memory under a name of its own, which is what standard input and
// unpacked drawings become. Taken by everything that reads.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include "host/io/PrivateFile.h"

namespace tzhost {

class InputFile {
  public:
    InputFile() = default;  // of no file

    // Implicit: a path converts to the file of that name.
    template <class Name, class = std::enable_if_t<std::is_convertible_v<const Name&, std::filesystem::path>>>
    InputFile(const Name& file) : name_(std::filesystem::path(file).native()) {}

    // A text in memory. Throws std::system_error.
    static InputFile ofText(std::string name, std::string_view text);

    // For messages: as the user knows it.
    const std::string& name() const { return name_; }

    // What can be opened, any number of times; a text's name is valid as long as a copy of this.
    const std::string& readName() const { return text_ ? text_->name() : name_; }

    bool isText() const { return text_ != nullptr; }

  private:
    std::string name_;
    std::shared_ptr<const PrivateFile> text_;  // null: the file of the name
};

// Throws OperationError, step "open", when the file is missing, a folder, or not readable: a file that is
// missing is not one that no module recognises.
void requireReadable(const InputFile& file);

// All that it holds; empty when it cannot be read.
std::string contentOf(const InputFile& file);

// The same file, unpacked when it is compressed (gzip, by its first bytes, whatever its name). Throws
// OperationError, steps "open" and "unpack": when it is broken or unpacks to more than 256 MiB. One that was
// cut off gives what is there, as it does where drawings are opened as images.
InputFile unpacked(const InputFile& file);

// What a stream brings until its end, unpacked in the same way, under that name.
InputFile readStream(int descriptor, const std::string& name);

}  // namespace tzhost
