#include "host/commands/FileArguments.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "host/core/OperationError.h"

namespace tzhost {
namespace {

bool isRegular(const std::string& name, struct stat& status) {
    return stat(name.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

std::string shownInput(const std::string& argument) {
    return isStandardStream(argument) ? "standard input" : argument;
}

InputFile openInput(const std::string& argument) {
    return isStandardStream(argument) ? readStream(dup(STDIN_FILENO), shownInput(argument)) : argument;
}

OutputFile openOutput(const std::string& argument, const char* step) {
    if (isStandardStream(argument)) return {OutputFile::ToStandardOutput{}, step};
    return {argument, step};
}

std::string outputFormat(const std::string& argument, const std::vector<std::string>& formats) {
    std::string ending = std::filesystem::path(argument).extension().native();
    struct stat status {};
    const bool isOther = stat(argument.c_str(), &status) == 0 && !S_ISREG(status.st_mode);
    if (ending.empty() || isOther || argument.rfind("/dev/", 0) == 0) return formats.front();
    ending.erase(0, 1);
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const auto format = std::find(formats.begin(), formats.end(), ending);
    return format == formats.end() ? "" : *format;
}

void requireDistinctOutputs(const CommandFiles& files) {
    std::set<std::string> seen;
    for (const std::string& output : {files.out, files.log, files.notes}) {
        if (output.empty()) continue;
        std::string place = output;
        if (!isStandardStream(output)) {
            struct stat status {};
            if (stat(output.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) continue;
            std::error_code error;
            place =
                std::filesystem::weakly_canonical(std::filesystem::absolute(output, error), error).native();
            if (error) continue;  // it cannot be written either
        }
        if (!seen.insert(place).second)
            throw UsageError((isStandardStream(output) ? "standard output" : output) +
                             " is named for two outputs");
    }
}

InputSet::InputSet(const std::vector<std::string>& inputs) {
    for (const std::string& input : inputs) {
        struct stat read {};
        if (!isStandardStream(input) && isRegular(input, read)) files_.emplace(read.st_dev, read.st_ino);
    }
}

void InputSet::requireOther(const std::string& output) const {
    struct stat written {};
    if (isStandardStream(output) || !isRegular(output, written)) return;
    if (files_.count({written.st_dev, written.st_ino}) > 0)
        throw OperationError(output, "write", kTzExists, "it is the input; --force replaces it");
}

}  // namespace tzhost
