#include "host/commands/LogFile.h"

#include <string_view>

#include "host/commands/FileArguments.h"
#include "hostsdk/CTzError.h"

namespace tzhost {

LogFile::LogFile(Terminal& terminal, const std::string& file, const InputFile& input) : terminal_(terminal) {
    if (file.empty()) return;
    if (!input.name().empty()) requireReadable(input);
    // NOLINTNEXTLINE(modernize-make-unique): it cannot be moved
    out_.reset(new OutputFile(openOutput(file, "write log")));
    terminal_.setLogSink([this](std::string_view line) { out_->write(line); });
}

LogFile::~LogFile() {
    if (!out_ || committed_) return;
    // Not reported: the user is told of what failed before.
    tzGate([&] { commit(); });
}

void LogFile::commit() {
    if (!out_) return;
    terminal_.setLogSink({});
    committed_ = true;
    out_->commit();
}

}  // namespace tzhost
