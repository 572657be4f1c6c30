#include "host/commandline/CommandTable.h"

#include <limits>
#include <memory>
#include <type_traits>

#include "host/pyramid/TilePixels.h"

namespace tzhost {
namespace {

using Formats = std::vector<std::string>;

void describeProgram(CLI::App& program, CommandLine& line) {
    program.name("tzhost");
    program.description(
        "tzhost, a reference host without a window: loads a module, offers it the services of a host, and "
        "does\n"
        "with its servers what a 3D application does.");
    program.footer(
        "Examples:\n"
        "  tzhost servers                       what the module offers\n"
        "  tzhost import logo.svg logo.json     a drawing into a scene\n"
        "  tzhost export logo.json back.svg     the scene back into a drawing\n"
        "  tzhost preview logo.json logo.png    a picture of the scene\n"
        "  tzhost pyramid logo.svg logo/        the drawing as tiles, with a page to look around in them\n"
        "  tzhost check logo.svg                what of the drawing does not get through, and why\n"
        "  tzhost normalize map.svg out.svg     any drawing rewritten so that it does\n"
        "`tzhost COMMAND --help` tells the options of a command. `-` stands for standard input or output.\n"
        "Exit status: 0 done, 1 refused or failed (one line on stderr says what, where and why), 2 wrong "
        "usage,\n"
        "130 interrupted.");
    program.set_version_flag("--version", "tzhost " TZSVG_VERSION, "Print the version and exit");
    program
        .add_option("--module", line.modules,
                    "A module file; without it, the module beside tzhost. Given more than once, all are "
                    "loaded, and the first that takes a file reads it")
        ->type_name("FILE")
        ->allow_extra_args(false);  // one a time: a command may follow
    program.add_flag("--quiet", line.isQuiet,
                     "Print errors and what was asked for only: no progress, warnings, notes or summaries");
    program.add_flag("--force", line.isForced, "Let an output replace the file that is the input");
    program.require_subcommand(1);
    // The options of the program may stand behind the command as well.
    program.fallthrough();
}

std::vector<std::string> inputsOf(const CommandArguments& arguments) {
    return {arguments.in};
}
std::vector<std::string> inputsOf(const CheckArguments& arguments) {
    return arguments.drawings;
}

// A command, and where its arguments are parsed to.
template <class Arguments>
class Command {
  public:
    // When the command is the one that was given, `run` is the work of the command line.
    template <class Run>
    Command(CLI::App& program, CommandLine& line, const char* name, const char* summary, Run run)
        : app_(*program.add_subcommand(name, summary)), arguments_(std::make_shared<Arguments>()) {
        app_.callback([&line, name, run, arguments = arguments_] {
            line.command = name;
            line.files = *arguments;
            line.inputs = inputsOf(*arguments);
            line.files.in = line.inputs.front();
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

    CLI::App& app() const { return app_; }
    Arguments& arguments() const { return *arguments_; }

    template <class Value>
    CLI::Option& required(const char* name, Value& value, const char* text) const {
        return *app_.add_option(name, value, text)->required();
    }
    void input(const char* name, const char* text = "The drawing") const {
        required(name, arguments_->in, text);
    }
    void output(const char* name, const char* text, Formats (*formats)()) const {
        required(name, arguments_->out, text).check([formats](const std::string& out) {
            const Formats known = formats();
            if (!outputFormat(out, known).empty()) return std::string();
            std::string endings;
            for (const std::string& format : known) endings += (endings.empty() ? "." : " or .") + format;
            return out + " must end in " + endings;
        });
    }
    template <class Number, class Limit>
    void number(const char* name, Number& value, Limit least, Limit most, const char* text) const {
        CLI::Option* const option = app_.add_option(name, value, text)->type_name("N");
        if (value != 0) option->capture_default_str();
        option->check(CLI::Range(least, most));
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
    void threadsOption(unsigned& threads, const char* text) const {
        number("--threads", threads, 1, 256, text);
    }
    void example(const std::string& text) const { app_.footer(text); }

  private:
    CLI::App& app_;
    std::shared_ptr<Arguments> arguments_;
};

template <class Run>
struct ArgumentsOf;
template <class Result, class Arguments>
struct ArgumentsOf<Result (*)(CommandContext&, const Arguments&)> {
    using Type = Arguments;
};
template <class Run>
Command(CLI::App&, CommandLine&, const char*, const char*, Run) -> Command<typename ArgumentsOf<Run>::Type>;

void addServers(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "servers", "List the servers that the module registers", runServers);
    command.jsonOption();
    command.logOption();
}

void addImport(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "import", "Read a drawing into a scene file", runImport);
    command.input("IN.svg");
    command.output("SCENE.json", "The scene file to write", [] { return Formats{"json"}; });
    command.logOption();
    command.normalizeOptions();
    command.number("--cancel-after", command.arguments().cancelAfter, int64_t{1},
                   std::numeric_limits<int64_t>::max(), "Cancel at the monitor's N-th step");
    command.example("Example:\n  tzhost import logo.svg logo.json --log logo.log");
}

Formats drawingFormats() {
    return {"svg"};
}

void addExport(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "export", "Write a scene file as a drawing", runExport);
    command.input("SCENE.json", "The scene file");
    command.output("OUT.svg", "The drawing to write", drawingFormats);
    command.flag("--prepare", command.arguments().options.preparatoryPass,
                 "Ask the saver for its preparatory pass first");
    command.logOption();
    command.example("Example:\n  tzhost export logo.json back.svg");
}

void addRoundTrip(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "roundtrip", "Read a drawing and write it again", runRoundTrip);
    command.input("IN.svg");
    command.output("OUT.svg", "The drawing to write", drawingFormats);
    command.logOption();
    command.normalizeOptions();
    command.example("Example:\n  tzhost roundtrip logo.svg back.svg");
}

void addPreview(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "preview", "Draw a scene as a picture", runPreview);
    command.input("IN", "A drawing, or a scene file (.json)");
    command.output("OUT.png", "The picture to write; its ending says how: .png, .jpg and what else Qt writes",
                   pictureFormats);
    command.number("--size", command.arguments().size, 1, kLargestPreview, "Pixels of the long side");
    command.flag("--page", command.arguments().page,
                 "Show the drawing's page, its view box, instead of all that is drawn");
    command.logOption();
    command.normalizeOptions();
    command.example("Example:\n  tzhost preview logo.svg logo.png --page --size 2048");
}

void addImageInfo(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "image-info", "Tell what a drawing is as an image", runImageInfo);
    command.input("IN.svg");
    command.jsonOption();
    command.logOption();
    command.normalizeOptions();
    command.example("Example:\n  tzhost image-info logo.svg --json");
}

void addTile(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "tile", "Write one tile of a drawing", runTile);
    command.input("IN.svg");
    command.required("LEVEL", command.arguments().level, "The level, 0 being the finest");
    command.required("COLUMN", command.arguments().column, "The tile's column");
    command.required("ROW", command.arguments().row, "The tile's row");
    command.output("OUT", "A picture (.png) or raw little-endian float RGBA (.rgba32f)", tileFormats);
    command.threadsOption(command.arguments().threads, "Ask for the tile on N threads at once");
    command.logOption();
    command.normalizeOptions();
    command.example("Example:\n  tzhost tile logo.svg 4 3 5 tile.png");
}

void addSample(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "sample", "Print one pixel of a drawing: r g b a", runSample);
    command.input("IN.svg");
    command.required("LEVEL", command.arguments().level, "The level, 0 being the coarsest");
    command.required("X", command.arguments().x, "Pixels from the left");
    command.required("Y", command.arguments().y, "Pixels from the top");
    command.logOption();
    command.normalizeOptions();
    command.example("Example:\n  tzhost sample logo.svg 10 512 300");
}

void addPyramid(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "pyramid",
                          "Write a drawing as Deep Zoom tiles, with a page to look around in them",
                          runPyramid);
    command.input("IN.svg");
    command.required("OUTDIR", command.arguments().out,
                     "The folder to write to; tiles that are there are kept");
    command.number("--max-level", command.arguments().options.maxLevel, 0, 16,
                   "The finest level: its long side is 2^N pixels");
    command.threadsOption(command.arguments().options.threads, "Draw on N threads");
    command.logOption();
    command.normalizeOptions();
    command.example("Example:\n  tzhost pyramid town-map.svg town-map --max-level 13");
}

void addNormalize(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "normalize",
                          "Rewrite a drawing so that an import and an export keep its look", runNormalize);
    command.input("IN", "The drawing, plain or compressed");
    command.output("OUT.svg", "The drawing to write", drawingFormats);
    command.notesOption();
    command.example(
        "What was changed or left out is told on stderr: file, line, column, element, what became of it.\n"
        "Example:\n  tzhost normalize map.svg map-normalized.svg --notes map-notes.json");
}

void addCheck(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "check",
                          "Tell whether drawings get through, and what of them would not", runCheck);
    command.required("FILE", command.arguments().drawings, "Drawings, or folders of drawings");
    command.jsonOption();
    command.file("--html", command.arguments().out,
                 "Write a page that shows each drawing as it is, as it comes back, and normalized");
    command.example(
        "Nothing is changed. A finding a line: file, line, column, what becomes of it, element, attribute, "
        "and what\n"
        "`--normalize` does about it.\n"
        "Exit status: 0 all clean, 1 one or more are refused, 2 wrong usage, 3 imported and exported with "
        "losses.\n"
        "Example:\n  tzhost check map.svg icons/ --html check.html");
}

}  // namespace

void describeCommands(CLI::App& program, CommandLine& line) {
    describeProgram(program, line);
    // In the order of the help.
    for (const auto add : {addServers, addImport, addExport, addRoundTrip, addPreview, addImageInfo, addTile,
                           addSample, addPyramid, addNormalize, addCheck}) {
        add(program, line);
    }
}

}  // namespace tzhost
