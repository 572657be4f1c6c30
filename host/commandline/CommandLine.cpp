#include "host/commandline/CommandLine.h"

#include <algorithm>

#include "host/commandline/CommandTable.h"
#include "host/commandline/NearestWord.h"

namespace tzhost {
namespace {

std::string didYouMean(const std::string& typed, const std::vector<std::string>& words) {
    const std::string nearest = nearestWord(typed, words);
    return nearest.empty() ? "" : ", did you mean \"" + nearest + "\"?";
}

void addOptions(const CLI::App& app, std::vector<std::string>& words) {
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) words.push_back("--" + name);
    }
}

// What is wrong with a command line, `typed`, that the parser did not take.
std::string problemOf(const std::vector<std::string>& typed, const CLI::App& program,
                      const CLI::ParseError& error) {
    const std::vector<std::string> unknown = program.remaining();
    const std::vector<CLI::App*> commands = program.get_subcommands();
    const auto isOption = [](const std::string& word) { return word.size() > 1 && word.front() == '-'; };
    // The parser looks for a command behind a word that it does not know as well.
    const auto isBeforeCommand = [&](const std::string& word) {
        const auto at = std::find(typed.begin(), typed.end(), word);
        return commands.empty() || at < std::find(typed.begin(), typed.end(), commands.front()->get_name());
    };
    const auto option = std::find_if(unknown.begin(), unknown.end(), isOption);
    const auto other = std::find_if_not(unknown.begin(), unknown.end(), isOption);
    std::vector<std::string> words;
    if (other != unknown.end() && isBeforeCommand(*other)) {
        for (const CLI::App* command : program.get_subcommands({})) words.push_back(command->get_name());
        return "unknown command \"" + *other + "\"" + didYouMean(*other, words);
    }
    if (option != unknown.end()) {
        addOptions(program, words);
        for (const CLI::App* command : commands) addOptions(*command, words);
        return "unknown option \"" + *option + "\"" + didYouMean(*option, words);
    }
    return error.what();
}

}  // namespace

CommandLine parseCommandLine(int argc, char** argv) {
    CommandLine line;
    CLI::App program;
    describeCommands(program, line);
    try {
        program.parse(argc, argv);
    } catch (const CLI::Success& help) {
        program.exit(help);
        line.run = nullptr;
    } catch (const CLI::ParseError& error) {
        throw UsageError(problemOf({argv, argv + argc}, program, error));
    }
    return line;
}

}  // namespace tzhost
