#include "host/commandline/CommandHelp.h"

#include "host/commandline/CommandTable.h"

namespace tzhost {
namespace {

OptionHelp helpOf(const CLI::Option& option) {
    OptionHelp help;
    for (const std::string& name : option.get_snames()) help.names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) help.names.push_back("--" + name);
    help.text = option.get_description();
    help.byDefault = option.get_default_str();
    help.isRequired = option.get_required();
    help.isRepeated = option.get_expected_max() > 1;
    const std::string type = option.get_type_name();
    if (option.get_positional()) {
        help.value = option.get_name(true);
    } else if (option.get_items_expected_max() > 0) {
        help.value = type.substr(0, type.find(':'));  // "N:INT in [1 - 256]"
    }
    return help;
}

CommandHelp helpOf(const CLI::App& app) {
    CommandHelp help{app.get_name(), app.get_description(), app.get_footer(), {}};
    for (const CLI::Option* option : app.get_options()) help.options.push_back(helpOf(*option));
    return help;
}

}  // namespace

std::vector<CommandHelp> commandHelp() {
    CommandLine line;
    CLI::App program;
    describeCommands(program, line);
    std::vector<CommandHelp> help = {helpOf(program)};
    for (const CLI::App* command : program.get_subcommands({})) help.push_back(helpOf(*command));
    return help;
}

}  // namespace tzhost
