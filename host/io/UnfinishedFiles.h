// The names of the files that are being written at the moment: a program that a signal ends removes them.
// Kept by OutputFile.
#pragma once

#include <cstddef>
#include <string>

namespace tzhost {

// One name, noted for as long as this lives. What is noted beyond some hundred at once is not remembered.
class UnfinishedFile {
  public:
    // The text must outlive this, unchanged.
    explicit UnfinishedFile(const std::string& name) noexcept;
    ~UnfinishedFile();
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

  private:
    const char* const name_;
    size_t slot_;
};

// Removes all of them. For a signal handler that then ends the process; nothing else may follow.
void removeUnfinishedFiles() noexcept;

}  // namespace tzhost
