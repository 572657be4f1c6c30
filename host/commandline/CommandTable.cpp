#include "host/commandline/CommandTable.h"

#include <limits>

#include "host/commandline/Command.h"
#include "host/commandline/CommandHelp.h"
#include "host/pyramid/TilePixels.h"

namespace tzhost {
namespace {

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
        "  tzhost import *.svg -o scenes/       many drawings at once\n"
        "`tzhost COMMAND --help` tells the options of a command. `-` stands for standard input or output.\n"
        "Exit status: 0 done, 1 refused or failed (one line on stderr says what, where and why), 2 wrong "
        "usage,\n"
        "130 interrupted.");
    program.set_version_flag("--version", std::string("tzhost ") + programVersion(),
                             "Print the version and exit");
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

void addServers(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "servers", "List the servers that the module registers", runServers);
    command.jsonOption();
    command.logOption();
}

Formats sceneFormats() {
    return {"json"};
}
Formats drawingFormats() {
    return {"svg"};
}

constexpr const char* kDrawing = "The drawing; with --output any number of them";
constexpr const char* kDrawingToWrite = "The drawing to write";

void addImport(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "import", "Read a drawing into a scene file", runImport);
    command.conversion("IN.svg", kDrawing, "SCENE.json", "The scene file to write", sceneFormats);
    command.logOption();
    command.normalizeOptions();
    command.number("--cancel-after", command.arguments().cancelAfter, int64_t{1},
                   std::numeric_limits<int64_t>::max(), "Cancel at the monitor's N-th step");
    command.more(
        "Examples:\n"
        "  tzhost import logo.svg logo.json --log logo.log\n"
        "  tzhost import drawings/*.svg -o scenes/ --update     those that have changed since the last time");
}

void addExport(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "export", "Write a scene file as a drawing", runExport);
    command.conversion("SCENE.json", "The scene file; with --output any number of them", "OUT.svg",
                       kDrawingToWrite, drawingFormats);
    command.flag("--prepare", command.arguments().options.preparatoryPass,
                 "Ask the saver for its preparatory pass first");
    command.logOption();
    command.more("Example:\n  tzhost export logo.json back.svg");
}

void addRoundTrip(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "roundtrip", "Read a drawing and write it again", runRoundTrip);
    command.conversion("IN.svg", kDrawing, "OUT.svg", kDrawingToWrite, drawingFormats);
    command.logOption();
    command.normalizeOptions();
    command.more("Example:\n  tzhost roundtrip logo.svg back.svg");
}

void addPreview(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "preview", "Draw a scene as a picture", runPreview);
    command.conversion(
        "IN", "A drawing, or a scene file (.json); with --output any number of them", "OUT.png",
        "The picture to write; its ending says how: .png, .jpg and what else Qt writes", pictureFormats);
    command.numberOr("--size", command.arguments().size, 1, kLargestPreview, "Pixels of the long side");
    command.flag("--page", command.arguments().page,
                 "Show the drawing's page, its view box, instead of all that is drawn");
    command.logOption();
    command.normalizeOptions();
    command.more("Example:\n  tzhost preview logo.svg logo.png --page --size 2048");
}

void addImageInfo(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "image-info", "Tell what a drawing is as an image", runImageInfo);
    command.input("IN.svg");
    command.jsonOption();
    command.logOption();
    command.normalizeOptions();
    command.more("Example:\n  tzhost image-info logo.svg --json");
}

void addTile(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "tile", "Write one tile of a drawing", runTile);
    command.input("IN.svg");
    command.required("LEVEL", command.arguments().level, "The level, 0 being the finest");
    command.required("COLUMN", command.arguments().column, "The tile's column");
    command.required("ROW", command.arguments().row, "The tile's row");
    command.output("OUT", "A picture (.png) or raw little-endian float RGBA (.rgba32f)", tileFormats);
    command.numberOr("--threads", command.arguments().threads, 1, 256,
                     "Ask for the tile on N threads at once");
    command.logOption();
    command.normalizeOptions();
    command.more("Example:\n  tzhost tile logo.svg 4 3 5 tile.png");
}

void addSample(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "sample", "Print one pixel of a drawing: r g b a", runSample);
    command.input("IN.svg");
    command.required("LEVEL", command.arguments().level, "The level, 0 being the coarsest");
    command.required("X", command.arguments().x, "Pixels from the left");
    command.required("Y", command.arguments().y, "Pixels from the top");
    command.logOption();
    command.normalizeOptions();
    command.more("Example:\n  tzhost sample logo.svg 10 512 300");
}

void addPyramid(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "pyramid",
                          "Write a drawing as Deep Zoom tiles, with a page to look around in them",
                          runPyramid);
    command.input("IN.svg");
    command
        .required("OUTDIR", command.arguments().out, "The folder to write to; tiles that are there are kept")
        .check([](const std::string& out) {
            return isStandardStream(out) ? "standard output is no folder" : std::string();
        });
    command.numberOr("--max-level", command.arguments().options.maxLevel, 0, 16,
                     "The finest level: its long side is 2^N pixels");
    command.number("--threads", command.arguments().options.threads, 1, 256,
                   "Draw on N threads; without it, one a processor");
    command.logOption();
    command.normalizeOptions();
    command.more("Example:\n  tzhost pyramid town-map.svg town-map --max-level 13");
}

void addNormalize(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "normalize",
                          "Rewrite a drawing so that an import and an export keep its look", runNormalize);
    command.conversion("IN", "The drawing, plain or compressed; with --output any number of them", "OUT.svg",
                       kDrawingToWrite, drawingFormats);
    command.notesOption();
    command.more(
        "What was changed or left out is told on stderr: file, line, column, element, what became of it.\n"
        "Linked pictures are looked for beside the drawing; for standard input, in the current folder.\n"
        "Example:\n  tzhost normalize map.svg map-normalized.svg --notes map-notes.json");
}

void addCheck(CLI::App& program, CommandLine& line) {
    const Command command(program, line, "check",
                          "Tell whether drawings get through, and what of them would not", runCheck);
    command.required("FILE", command.arguments().inputs, "Drawings, or folders of drawings");
    command.jsonOption();
    command.file("--html", command.arguments().out,
                 "Write a page that shows each drawing as it is, as it comes back, and normalized");
    command.more(
        "Nothing is changed. A finding a line: file, line, column, what becomes of it, element, attribute, "
        "and what\n"
        "`--normalize` does about it.\n"
        "Exit status: 0 all clean, 1 one or more are refused, 2 wrong usage, 3 imported and exported with "
        "losses.\n"
        "Example:\n  tzhost check map.svg icons/ --html check.html");
}

}  // namespace

const char* programVersion() {
    return TZSVG_VERSION;
}

std::string formatProblem(const std::string& out, const Formats& formats) {
    if (!outputFormat(out, formats).empty()) return {};
    std::string endings;
    for (const std::string& format : formats) endings += (endings.empty() ? "." : " or .") + format;
    return out + " must end in " + endings;
}

void takeFiles(const std::vector<std::string>& names, const Conversion& conversion, CommandLine& line) {
    const Formats formats = conversion.formats();
    if (isBatch(line.batch)) {
        line.batch.ending = formats.front();
        return;
    }
    if (names.size() < 2) throw CLI::RequiredError(conversion.argument);
    if (names.size() > 2) {
        throw UsageError(
            std::to_string(names.size()) +
            " files: for more than an input and an output, name a folder to write to (--output)");
    }
    // Savers of other modules write formats of their own.
    if (line.modules.empty() || formats != drawingFormats()) {
        const std::string problem = formatProblem(names[1], formats);
        if (!problem.empty()) throw CLI::ValidationError(conversion.argument, problem);
    }
    line.files.in = names[0];
    line.files.out = names[1];
    line.inputs = {names[0]};
}

void describeCommands(CLI::App& program, CommandLine& line) {
    describeProgram(program, line);
    // In the order of the help.
    for (const auto add : {addServers, addImport, addExport, addRoundTrip, addPreview, addImageInfo, addTile,
                           addSample, addPyramid, addNormalize, addCheck}) {
        add(program, line);
    }
}

}  // namespace tzhost
