// The only source that includes CLI11.
#include "host/commands/CommandLine.h"

#include <CLI/CLI.hpp>
#include <limits>
#include <memory>

namespace tzhost {
namespace {

void describeProgram(CLI::App& app, std::string& moduleFile) {
    app.name("tzhost");
    app.description(
        "tzhost, a reference host without a window: loads a module, offers it the services of a host, and "
        "does\n"
        "with its servers what a 3D application does.");
    app.footer(
        "Examples:\n"
        "  tzhost servers                       what the module offers\n"
        "  tzhost import logo.svg logo.json     a drawing into a scene\n"
        "  tzhost export logo.json back.svg     the scene back into a drawing\n"
        "  tzhost preview logo.json logo.png    a picture of the scene\n"
        "  tzhost pyramid logo.svg logo/        the drawing as tiles, with a page to look around in them\n"
        "  tzhost check logo.svg                what of the drawing does not get through, and why\n"
        "  tzhost normalize map.svg out.svg     any drawing rewritten so that it does\n"
        "`tzhost COMMAND --help` tells the options of a command.\n"
        "Exit status: 0 done, 1 refused or failed (one line on stderr says what, where and why), 2 wrong "
        "usage.");
    app.add_option("--module", moduleFile, "The module file; without it, the module beside tzhost")
        ->type_name("FILE");
    app.require_subcommand(1);
}

// A command and where its arguments are parsed to.
template <class Arguments>
struct Command {
    CLI::App& app;
    Arguments& arguments;

    CLI::Option& required(const char* name, std::string& value, const char* description) const {
        return *app.add_option(name, value, description)->required();
    }
    template <class Number>
    CLI::Option& number(const char* name, Number& value, const char* description) const {
        return *app.add_option(name, value, description)->type_name("N");
    }
    // Every command has it, at its place among the others.
    void logOption() const {
        app.add_option("--log", arguments.log, "Write the lines that the module logs to this file")
            ->type_name("FILE");
    }
    void normalizeOptions() const {
        CLI::Option* const normalize =
            app.add_flag("--normalize", arguments.normalize.normalize,
                         "Rewrite the drawing first, so that more of it gets through");
        app.add_option("--notes", arguments.normalize.notes,
                       "Write what was changed or left out to this file, as JSON")
            ->type_name("FILE")
            ->needs(normalize);
    }
};

// Adds a command that, when it is the one that was given, makes `run` the work of the command line.
template <class Arguments>
Command<Arguments> add(CLI::App& app, CommandLine& line, const char* name, const char* description,
                       void (*run)(const CommandContext&, const Arguments&)) {
    auto arguments = std::make_shared<Arguments>();
    CLI::App* const command = app.add_subcommand(name, description);
    command->callback([&line, name, run, arguments] {
        line.command = name;
        line.in = arguments->in;
        line.run = [run, arguments](const CommandContext& context) {
            run(context, *arguments);
            return 0;
        };
    });
    return {*command, *arguments};
}

void addServers(CLI::App& app, CommandLine& line) {
    const auto command = add(app, line, "servers", "List the servers that the module registers", runServers);
    command.app.add_flag("--json", command.arguments.json, "As JSON");
    command.logOption();
}

void addImport(CLI::App& app, CommandLine& line) {
    const auto command = add(app, line, "import", "Read a drawing into a scene file", runImport);
    command.required("IN.svg", command.arguments.in, "The drawing");
    command.required("SCENE.json", command.arguments.scene, "The scene file to write");
    command.logOption();
    command.normalizeOptions();
    command.number("--cancel-after", command.arguments.cancelAfter, "Cancel at the monitor's N-th step")
        .check(CLI::Range(int64_t{1}, std::numeric_limits<int64_t>::max()));
    command.app.footer("Example:\n  tzhost import logo.svg logo.json --log logo.log");
}

void addExport(CLI::App& app, CommandLine& line) {
    const auto command = add(app, line, "export", "Write a scene file as a drawing", runExport);
    command.required("SCENE.json", command.arguments.in, "The scene file");
    command.required("OUT.svg", command.arguments.out, "The drawing to write");
    command.app.add_flag("--prepare", command.arguments.options.preparatoryPass,
                         "Ask the saver for its preparatory pass first");
    command.logOption();
    command.app.footer("Example:\n  tzhost export logo.json back.svg");
}

void addRoundTrip(CLI::App& app, CommandLine& line) {
    const auto command = add(app, line, "roundtrip", "Read a drawing and write it again", runRoundTrip);
    command.required("IN.svg", command.arguments.in, "The drawing");
    command.required("OUT.svg", command.arguments.out, "The drawing to write");
    command.logOption();
    command.normalizeOptions();
    command.app.footer("Example:\n  tzhost roundtrip logo.svg back.svg");
}

void addPreview(CLI::App& app, CommandLine& line) {
    const auto command = add(app, line, "preview", "Draw a scene as a picture", runPreview);
    command.required("IN", command.arguments.in, "A drawing, or a scene file (.json)");
    command.required("OUT.png", command.arguments.out, "The picture to write");
    command.number("--size", command.arguments.size, "Pixels of the long side")
        .capture_default_str()
        ->check(CLI::Range(1, kLargestPreview));
    command.logOption();
    command.normalizeOptions();
    command.app.footer("Example:\n  tzhost preview logo.svg logo.png --size 2048");
}

void addImageInfo(CLI::App& app, CommandLine& line) {
    const auto command = add(app, line, "image-info", "Tell what a drawing is as an image", runImageInfo);
    command.required("IN.svg", command.arguments.in, "The drawing");
    command.app.add_flag("--json", command.arguments.json, "As JSON");
    command.logOption();
    command.normalizeOptions();
    command.app.footer("Example:\n  tzhost image-info logo.svg --json");
}

void addTile(CLI::App& app, CommandLine& line) {
    const auto command = add(app, line, "tile", "Write one tile of a drawing", runTile);
    command.required("IN.svg", command.arguments.in, "The drawing");
    command.app.add_option("LEVEL", command.arguments.level, "The level, 0 being the finest")->required();
    command.app.add_option("COLUMN", command.arguments.column, "The tile's column")->required();
    command.app.add_option("ROW", command.arguments.row, "The tile's row")->required();
    command
        .required("OUT", command.arguments.out, "A picture (.png) or raw little-endian float RGBA (.rgba32f)")
        .check([](const std::string& out) {
            return isPictureName(out) || isRawName(out) ? "" : "must end in .png or .rgba32f";
        });
    command.number("--threads", command.arguments.threads, "Ask for the tile on N threads at once")
        .capture_default_str()
        ->check(CLI::Range(1, 256));
    command.logOption();
    command.normalizeOptions();
    command.app.footer("Example:\n  tzhost tile logo.svg 4 3 5 tile.png");
}

void addSample(CLI::App& app, CommandLine& line) {
    const auto command = add(app, line, "sample", "Print one pixel of a drawing: r g b a", runSample);
    command.required("IN.svg", command.arguments.in, "The drawing");
    command.app.add_option("LEVEL", command.arguments.level, "The level, 0 being the coarsest")->required();
    command.app.add_option("X", command.arguments.x, "Pixels from the left")->required();
    command.app.add_option("Y", command.arguments.y, "Pixels from the top")->required();
    command.logOption();
    command.normalizeOptions();
    command.app.footer("Example:\n  tzhost sample logo.svg 10 512 300");
}

void addPyramid(CLI::App& app, CommandLine& line) {
    const auto command =
        add(app, line, "pyramid", "Write a drawing as Deep Zoom tiles, with a page to look around in them",
            runPyramid);
    command.required("IN.svg", command.arguments.in, "The drawing");
    command.required("OUTDIR", command.arguments.folder,
                     "The folder to write to; tiles that are there are kept");
    command
        .number("--max-level", command.arguments.options.maxLevel,
                "The finest level: its long side is 2^N pixels")
        .capture_default_str()
        ->check(CLI::Range(0, 16));
    command.number("--threads", command.arguments.options.threads, "Draw on N threads")
        .capture_default_str()
        ->check(CLI::Range(1, 256));
    command.logOption();
    command.normalizeOptions();
    command.app.footer("Example:\n  tzhost pyramid town-map.svg town-map --max-level 13");
}

void addNormalize(CLI::App& app, CommandLine& line) {
    auto arguments = std::make_shared<NormalizeCommandArguments>();
    CLI::App* const command =
        app.add_subcommand("normalize", "Rewrite a drawing so that an import and an export keep its look");
    command->add_option("IN", arguments->in, "The drawing, plain or compressed")->required();
    command->add_option("OUT.svg", arguments->out, "The drawing to write")->required();
    command
        ->add_option("--notes", arguments->notes, "Write what was changed or left out to this file, as JSON")
        ->type_name("FILE");
    command->footer(
        "What was changed or left out is told on stderr: file, line, column, element, what became of it.\n"
        "Example:\n  tzhost normalize map.svg map-normalized.svg --notes map-notes.json");
    command->callback([&line, arguments] {
        line.command = "normalize";
        line.in = arguments->in;
        line.runAlone = [arguments](Terminal& terminal) {
            runNormalize(terminal, *arguments);
            return 0;
        };
    });
}

void addCheck(CLI::App& app, CommandLine& line) {
    auto arguments = std::make_shared<CheckArguments>();
    CLI::App* const command =
        app.add_subcommand("check", "Tell whether drawings get through, and what of them would not");
    command->add_option("FILE", arguments->in, "Drawings, or folders of drawings")->required();
    command->add_flag("--json", arguments->json, "As JSON");
    command
        ->add_option("--html", arguments->page,
                     "Write a page that shows each drawing as it is, as it comes back, and normalized")
        ->type_name("PAGE");
    command->footer(
        "Nothing is changed. A finding a line: file, line, column, what becomes of it, element, attribute, "
        "and "
        "what\n"
        "`--normalize` does about it.\n"
        "Exit status: 0 all clean, 1 one or more are refused, 2 wrong usage, 3 imported and exported with "
        "losses.\n"
        "Example:\n  tzhost check map.svg icons/ --html check.html");
    command->callback([&line, arguments] {
        line.command = "check";
        line.in = arguments->in.front();
        if (arguments->page.empty()) {
            line.runAlone = [arguments](Terminal& terminal) { return runCheck(terminal, *arguments); };
        } else {
            line.run = [arguments](const CommandContext& context) {
                return runCheckPage(context, *arguments);
            };
        }
    });
}

}  // namespace

CommandLine parseCommandLine(int argc, char** argv) {
    CommandLine line;
    CLI::App app;
    describeProgram(app, line.module);
    // In the order of the help.
    for (const auto addTo : {addServers, addImport, addExport, addRoundTrip, addPreview, addImageInfo,
                             addTile, addSample, addPyramid, addNormalize, addCheck}) {
        addTo(app, line);
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& help) {
        app.exit(help);
        line.run = nullptr;
        line.runAlone = nullptr;
    } catch (const CLI::ParseError& error) {
        throw UsageError(error.what());
    }
    return line;
}

}  // namespace tzhost
