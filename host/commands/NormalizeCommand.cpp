// tzhost normalize: any drawing rewritten into the form that survives an import and an export.
#include <memory>
#include <string>

#include "host/Normalizer.h"
#include "host/commands/Commands.h"
#include "host/commands/NormalizeOption.h"
#include "host/core/OperationError.h"
#include "host/core/Progress.h"
#include "host/io/OutputFile.h"

namespace tzhost {
namespace {

struct NormalizeCommandArguments {
    std::string in;
    std::string out;
    std::string notes;
};

void runNormalize(Terminal& terminal, const NormalizeCommandArguments& arguments) {
    const NormalizedText text = inStep(arguments.in, "normalize", [&] {
        const Progress progress(terminal, "normalizing " + arguments.in);
        return normalizeFile(arguments.in);
    });
    OutputFile out(arguments.out, "write");
    out.write(text.document);
    out.complete();
    tellNotes(terminal, arguments.in, text, arguments.notes);
    out.commit();
}

}  // namespace

void addNormalizeCommand(CLI::App& app, CommandRun& run) {
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
    command->callback([arguments, &run] {
        run.file = arguments->in;
        run.workAlone = [arguments](Terminal& terminal) { runNormalize(terminal, *arguments); };
    });
}

}  // namespace tzhost
