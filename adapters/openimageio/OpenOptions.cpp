#include "adapters/openimageio/OpenOptions.h"

#include <OpenImageIO/strutil.h>

#include <cstdlib>
#include <map>
#include <optional>
#include <stdexcept>

namespace tzoiio {
namespace {

[[noreturn]] void refuse(const std::string& option, const std::string& value, const char* wanted) {
    throw std::invalid_argument(option + "=" + value + ": must be " + wanted);
}

uint32_t sizeFrom(const std::string& option, const std::string& value) {
    const bool isNumber = OIIO::Strutil::string_is_int(value);
    const long size = isNumber ? OIIO::Strutil::stoi(value) : 0;
    if (size < 1 || size > static_cast<long>(kLargestSize) || (size & (size - 1)) != 0)
        refuse(option, value, "a power of two from 1 to 65536");
    return static_cast<uint32_t>(size);
}

bool switchFrom(const std::string& option, const std::string& value) {
    if (value != "0" && value != "1") refuse(option, value, "0 or 1");
    return value == "1";
}

struct Given {
    std::string option;  // as the user wrote it
    std::string value;
};

std::optional<Given> inEnvironment(const char* name) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): a program that changes its environment meanwhile is told so
    const char* const value = std::getenv(name);
    return value && *value ? std::optional<Given>({name, value}) : std::nullopt;
}

std::optional<Given> inConfiguration(const OIIO::ImageSpec& config, const char* name) {
    const OIIO::ParamValue* const value = config.find_attribute(name);
    return value ? std::optional<Given>({name, value->get_string()}) : std::nullopt;
}

using Arguments = std::map<std::string, std::string>;

std::string split(const std::string& name, Arguments& arguments) {
    std::string file;
    return OIIO::Strutil::get_rest_arguments(name, file, arguments) ? file : name;
}

}  // namespace

std::string fileOf(const std::string& name) {
    Arguments arguments;
    return split(name, arguments);
}

OpenOptions readOpenOptions(const std::string& name, const OIIO::ImageSpec& config) {
    Arguments arguments;
    OpenOptions options;
    options.file = split(name, arguments);
    for (const auto& [option, value] : arguments) {
        if (option != "size" && option != "normalize")
            throw std::invalid_argument("unknown option " + option + ": there are size and normalize");
    }
    const auto given = [&](const char* option, const char* configured, const char* variable) {
        const auto found = arguments.find(option);
        if (found != arguments.end()) return std::optional<Given>({found->first, found->second});
        const auto inConfig = inConfiguration(config, configured);
        return inConfig ? inConfig : inEnvironment(variable);
    };
    if (const auto size = given("size", "svg:size", "TZSVG_OIIO_SIZE"))
        options.size = sizeFrom(size->option, size->value);
    if (const auto normalize = given("normalize", "svg:normalize", "TZSVG_OIIO_NORMALIZE"))
        options.normalize = switchFrom(normalize->option, normalize->value);
    options.unassociatedAlpha = config.get_int_attribute("oiio:UnassociatedAlpha") != 0;
    return options;
}

}  // namespace tzoiio
