#include "host/batch/BatchPlan.h"

#include <filesystem>
#include <map>

#include "host/core/OperationError.h"

namespace tzhost {
namespace {

namespace fs = std::filesystem;

// "map" of "drawings/map.svg" and of "map.svg.gz".
std::string stemOf(const fs::path& file) {
    const fs::path name = file.extension() == ".gz" ? file.stem() : file.filename();
    return name.stem().native();
}

void makeFolder(const std::string& folder) {
    if (folder.empty()) return;
    std::error_code error;
    fs::create_directories(folder, error);
    // It tells nothing of a file that is in the way.
    if (!error && !fs::is_directory(folder, error)) error = std::make_error_code(std::errc::not_a_directory);
    if (error) throw OperationError(folder, "make folder", kTzFailed, error.message());
}

// Other programs have a `-o FILE`: a folder of that name is not what was meant.
void requireNoFileName(const BatchArguments& arguments) {
    std::error_code error;
    if (fs::path(arguments.folder).extension() != "." + arguments.ending ||
        fs::exists(arguments.folder, error))
        return;
    throw UsageError("--output: " + arguments.folder +
                     " looks like a file; a folder is meant, and one file is named behind its input");
}

std::string fileIn(const std::string& folder, const std::string& stem, const std::string& ending) {
    return folder.empty() ? "" : (fs::path(folder) / (stem + "." + ending)).native();
}

bool isNewer(const std::string& out, const std::string& in) {
    std::error_code error;
    const auto written = fs::last_write_time(out, error);
    if (error) return false;
    const auto read = fs::last_write_time(in, error);
    return !error && written > read;
}

}  // namespace

BatchPlan planBatch(const std::vector<std::string>& inputs, const CommandFiles& given,
                    const BatchArguments& arguments, bool isForced) {
    for (const std::string& folder : {arguments.folder, given.log, given.notes}) {
        if (isStandardStream(folder))
            throw UsageError(
                "standard output is no folder: with --output, --log and --notes are folders as well");
    }
    requireNoFileName(arguments);
    BatchPlan plan;
    std::map<std::string, const std::string*> inputOf;
    const InputSet read(isForced ? std::vector<std::string>() : inputs);
    for (const std::string& in : inputs) {
        if (isStandardStream(in))
            throw UsageError("standard input has no name for a file in " + arguments.folder);
        const std::string stem = stemOf(in);
        CommandFiles files{in, fileIn(arguments.folder, stem, arguments.ending),
                           fileIn(given.log, stem, "log"), fileIn(given.notes, stem, "json")};
        const auto [other, isFirst] = inputOf.emplace(files.out, &in);
        if (!isFirst) throw UsageError(*other->second + " and " + in + " would both become " + files.out);
        for (const std::string& out : {files.out, files.log, files.notes}) read.requireOther(out);
        if (arguments.isUpdate && isNewer(files.out, in)) {
            ++plan.upToDate;
        } else {
            plan.files.push_back(std::move(files));
        }
    }
    if (!plan.files.empty()) requireDistinctOutputs(plan.files.front());
    for (const std::string& folder : {arguments.folder, given.log, given.notes}) makeFolder(folder);
    return plan;
}

}  // namespace tzhost
