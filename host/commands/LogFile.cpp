// See the header.
#include "host/commands/LogFile.h"

#include <string_view>

#include "host/InputFile.h"
#include "hostsdk/CTzError.h"

namespace tzhost {

void LogFile::addOption(CLI::App& command, std::string& file) {
    command.add_option("--log", file, "Write the lines that the module logs to this file")->type_name("FILE");
}

LogFile::LogFile(const Host& host, const std::string& file, const std::string& input) : host_(host) {
    if (file.empty()) return;
    if (!input.empty()) requireReadable(input);
    out_.emplace(file, "write log");
    host_.log().setSink([this](std::string_view line) { out_->write(line); });
}

LogFile::~LogFile() {
    if (!out_ || committed_) return;
    // What failed before is what the user is told.
    tzGate([&] { commit(); });
}

void LogFile::commit() {
    if (!out_) return;
    host_.log().setSink({});
    committed_ = true;
    out_->commit();
}

}  // namespace tzhost
