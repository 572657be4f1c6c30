// tzhost normalize: any drawing rewritten into the form that survives an import and an export.
#include "host/Normalizer.h"
#include "host/commands/Commands.h"
#include "host/commands/NormalizeOption.h"
#include "host/core/Observer.h"
#include "host/core/OperationError.h"
#include "host/io/Files.h"

namespace tzhost {

void runNormalize(CommandContext& context, const CommandArguments& arguments) {
    const InputFile in = openInput(arguments.in);
    const NormalizedText text = inStep(in.name(), "normalize", [&] {
        const Progress progress(context.terminal(), "normalizing " + in.name());
        return normalizeFile(in);
    });
    OutputFile out = openOutput(arguments.out, "write");
    out.write(text.document);
    out.complete();
    tellNotes(context.terminal(), in, text, arguments.notes);
    out.commit();
}

}  // namespace tzhost
