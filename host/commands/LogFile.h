// `--log FILE`: writes the lines that the module logs to a file. Every command that uses a module has one.
#pragma once

#include <memory>
#include <string>

#include "host/commands/Terminal.h"
#include "host/io/Files.h"
#include "host/io/InputFile.h"

namespace tzhost {

class LogFile {
  public:
    // Takes the log's lines from here on; no file name, no file. `input` is what the command reads, if
    // anything. Throws OperationError, steps "open" for an input that cannot be read, which leaves no log,
    // and "write log".
    LogFile(Terminal& terminal, const std::string& file, const InputFile& input);

    // Commits the file if commit() has not been called: the log of a failed command is kept.
    ~LogFile();
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    // The work is done: the file is complete. Throws OperationError, step "write log".
    void commit();

  private:
    Terminal& terminal_;
    std::unique_ptr<OutputFile> out_;
    bool committed_ = false;
};

}  // namespace tzhost
