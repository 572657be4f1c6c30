#include "host/commands/NormalizeOption.h"

#include <cstdio>
#include <map>

#include "host/core/Observer.h"
#include "host/core/Utf8.h"
#include "host/io/Files.h"

namespace tzhost {
namespace {

// Notes of one kind that are told one by one.
constexpr uint64_t kMostAlike = 10;

// "map.svg:12:5: <text id="title"> font-family: carried: …"
std::string lineOf(const std::string& in, const NormalizerNote& note) {
    std::string line =
        in + ":" + std::to_string(note.line) + ":" + std::to_string(note.column) + ": <" + note.element;
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

Drawing openDrawing(Terminal& terminal, const std::string& in, const NormalizeArguments& arguments) {
    if (!arguments.normalize) return in;
    const Drawing drawing = [&] {
        const Progress progress(terminal, "normalizing " + in);
        return Drawing::normalized(in);
    }();
    tellNotes(terminal, in, *drawing.normalization(), arguments.notes);
    return drawing;
}

void tellNotes(Terminal& terminal, const std::string& in, const NormalizedText& text,
               const std::string& notesFile) {
    const std::string file = toOneLine(in);
    std::map<std::string, uint64_t> alike;
    for (const NormalizerNote& note : text.notes) {
        if (++alike[kindOf(note)] <= kMostAlike) terminal.note(toOneLine(lineOf(file, note), 1000));
    }
    for (const auto& [kind, count] : alike) {
        if (count <= kMostAlike) continue;
        terminal.note(toOneLine(file + ": " + std::to_string(count - kMostAlike) + " more: " + kind, 1000));
    }
    if (text.moreNotes > 0) terminal.note(file + ": " + std::to_string(text.moreNotes) + " more notes");
    if (notesFile.empty()) return;
    OutputFile out(notesFile, "write notes");
    out.write(text.notesJson);
    out.write("\n");
    out.commit();
}

}  // namespace tzhost
