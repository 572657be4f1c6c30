// tzhost normalize: any drawing rewritten into the form that survives an import and an export.
#include "host/Normalizer.h"
#include "host/commands/Commands.h"
#include "host/core/Observer.h"
#include "host/core/OperationError.h"
#include "host/io/Files.h"

namespace tzhost {
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

}  // namespace tzhost
