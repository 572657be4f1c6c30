#include "host/commands/NormalizeOption.h"

#include "host/commands/AlikeLines.h"
#include "host/core/Observer.h"
#include "host/core/Utf8.h"
#include "host/io/Files.h"

namespace tzhost {
namespace {

// "<text id="title"> font-family: carried: …"
std::string describe(const NormalizerNote& note) {
    std::string line = "<" + note.element;
    if (!note.id.empty()) line += " id=\"" + note.id + "\"";
    line += "> ";
    if (!note.attribute.empty()) line += note.attribute + ": ";
    return line + note.code + ": " + note.text;
}

// What notes are alike by.
std::string kindOf(const NormalizerNote& note) {
    return "<" + note.element + "> " + (note.attribute.empty() ? "" : note.attribute + ": ") + note.code +
           ": " + note.text;
}

}  // namespace

Drawing openDrawing(Terminal& terminal, const InputFile& in, const DrawingArguments& arguments,
                    Purpose purpose) {
    if (!arguments.normalize) return in;
    Drawing drawing = [&] {
        const Progress progress(terminal, "normalizing " + in.name());
        return Drawing::normalized(in, purpose);
    }();
    tellNotes(terminal, in, *drawing.normalization(), arguments.notes);
    return drawing;
}

void tellNotes(Terminal& terminal, const InputFile& in, const NormalizedText& text,
               const std::string& notesFile) {
    AlikeLines lines(toOneLine(in.name()), [&terminal](const std::string& line) { terminal.note(line); });
    for (const NormalizerNote& note : text.notes)
        lines.add(note.line, note.column, describe(note), kindOf(note));
    lines.finish(text.moreNotes);
    if (notesFile.empty()) return;
    OutputFile out = openOutput(notesFile, "write notes");
    out.write(text.notesJson);
    out.write("\n");
    out.commit();
}

}  // namespace tzhost
