// A command of the command line, for CommandTable: what is said of its arguments and options, and where they
// are parsed to.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <type_traits>

#include "host/commandline/CommandLine.h"

namespace tzhost {

using Formats = std::vector<std::string>;

// What is wrong with the name of an output that ends in something else; empty: nothing.
std::string formatProblem(const std::string& out, const Formats& formats);

// What a command that converts files writes.
struct Conversion {
    std::string argument;            // what the help calls it
    Formats (*formats)() = nullptr;  // null: the command converts none
};

// Takes the names of a conversion apart: one input and one output, or with `--output` any number of inputs.
// Throws CLI::ParseError, UsageError.
void takeFiles(const std::vector<std::string>& names, const Conversion& conversion, CommandLine& line);

template <class Arguments>
class Command {
  public:
    // When the command is the one that was given, `run` is the work of the command line.
    template <class Run>
    Command(CLI::App& program, CommandLine& line, const char* name, const char* summary, Run run)
        : app_(*program.add_subcommand(name, summary)), line_(line) {
        app_.callback([&line, name, run, arguments = arguments_, conversion = conversion_] {
            line.command = name;
            line.files = *arguments;
            line.inputs = arguments->inputs;
            if (conversion->formats) takeFiles(arguments->inputs, *conversion, line);
            if (line.inputs.empty()) line.inputs = {line.files.in};
            line.run = [run, arguments](CommandContext& context, const CommandFiles& files) {
                Arguments given = *arguments;
                static_cast<CommandFiles&>(given) = files;
                if constexpr (std::is_void_v<decltype(run(context, given))>) {
                    run(context, given);
                    return 0;
                } else {
                    return run(context, given);
                }
            };
        });
    }

    Arguments& arguments() const { return *arguments_; }

    template <class Value>
    CLI::Option& required(const char* name, Value& value, const char* text) const {
        return *app_.add_option(name, value, text)->required();
    }
    void input(const char* name) const { required(name, arguments_->in, "The drawing"); }
    void output(const char* name, const char* text, Formats (*formats)()) const {
        required(name, arguments_->out, text).check([formats](const std::string& out) {
            return formatProblem(out, formats());
        });
    }
    // An input and an output, or many inputs and a folder for what they become.
    void conversion(const char* in, const char* inText, const char* out, const char* outText,
                    Formats (*formats)()) const {
        *conversion_ = {out, formats};
        required(in, arguments_->inputs, inText);
        app_.add_option(
                out, [](const CLI::results_t&) { return true; }, outText)
            ->type_name("TEXT");
        CLI::Option* const folder =
            app_.add_option(
                    "-o,--output", line_.batch.folder,
                    "Write to this folder, for any number of inputs, a file of each one's name; --log and "
                    "--notes are folders then as well")
                ->type_name("FOLDER");
        number("-j,--jobs", line_.batch.jobs, 1, 1024,
               "Work on N files at once; without it, one a processor");
        flag("--update", line_.batch.isUpdate,
             "Leave out inputs that are older than what is written of them");
        for (const char* const option : {"--jobs", "--update"}) app_.get_option(option)->needs(folder);
    }
    template <class Number, class Limit>
    void number(const char* name, Number& value, Limit least, Limit most, const char* text) const {
        app_.add_option(name, value, text)->type_name("N")->check(CLI::Range(least, most));
    }
    // With a default that the help tells.
    template <class Number, class Limit>
    void numberOr(const char* name, Number& value, Limit least, Limit most, const char* text) const {
        number(name, value, least, most, text);
        app_.get_option(name)->capture_default_str();
    }
    void file(const char* name, std::string& value, const char* text) const {
        app_.add_option(name, value, text)->type_name("FILE");
    }
    void flag(const char* name, bool& value, const char* text) const { app_.add_flag(name, value, text); }

    // What many commands have, at its place among the others.
    void jsonOption() const { flag("--json", arguments_->json, "As JSON"); }
    void logOption() const {
        file("--log", arguments_->log, "Write the lines that the module logs to this file");
    }
    void notesOption() const {
        file("--notes", arguments_->notes, "Write what was changed or left out to this file, as JSON");
    }
    void normalizeOptions() const {
        flag("--normalize", arguments_->normalize,
             "Rewrite the drawing first, so that more of it gets through");
        notesOption();
        app_.get_option("--notes")->needs(app_.get_option("--normalize"));
    }
    // What the options do not say, and examples.
    void more(const char* text) const { app_.footer(text); }

  private:
    CLI::App& app_;
    CommandLine& line_;
    std::shared_ptr<Arguments> arguments_ = std::make_shared<Arguments>();
    std::shared_ptr<Conversion> conversion_ = std::make_shared<Conversion>();
};

template <class Run>
struct ArgumentsOf;
template <class Result, class Arguments>
struct ArgumentsOf<Result (*)(CommandContext&, const Arguments&)> {
    using Type = Arguments;
};
template <class Run>
Command(CLI::App&, CommandLine&, const char*, const char*, Run) -> Command<typename ArgumentsOf<Run>::Type>;

}  // namespace tzhost
