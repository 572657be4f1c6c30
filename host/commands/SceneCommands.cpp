// tzhost import, export, roundtrip and preview.
#include <array>
#include <cstdio>
#include <filesystem>

#include "host/DrawingPlace.h"
#include "host/Refusal.h"
#include "host/commands/Commands.h"
#include "host/commands/Interrupts.h"
#include "host/commands/LogFile.h"
#include "host/commands/NormalizeOption.h"
#include "host/commands/SilentLosses.h"
#include "host/core/OperationError.h"
#include "host/core/Utf8.h"
#include "host/io/Files.h"
#include "host/preview/Preview.h"
#include "host/pyramid/TilePixels.h"
#include "host/scenefile/SceneReader.h"
#include "host/scenefile/SceneWriter.h"

namespace tzhost {
namespace {

// A text has no ending to tell by: scene files begin with a brace.
bool isSceneFile(const InputFile& file) {
    if (file.isText()) {
        const std::string text = contentOf(file);
        const size_t first = text.find_first_not_of("\xEF\xBB\xBF \t\r\n");
        return first != std::string::npos && text[first] == '{';
    }
    const std::string extension = std::filesystem::path(file.name()).extension().native();
    return extension == ".json" || extension == ".JSON";
}

// The module reads plain text only. The normalizer unpacks what it is given.
Drawing openForImport(CommandContext& context, const InputFile& in, const DrawingArguments& arguments) {
    return openDrawing(context.terminal(), arguments.normalize ? in : unpacked(in), arguments,
                       Purpose::kScene);
}

// "a.svg: 171 shapes, 173 polygons, 1624 points, 0.002 s"
std::string lineOf(const InputFile& in, const ImportSummary& summary) {
    std::array<char, 32> seconds{};
    std::snprintf(seconds.data(), seconds.size(), "%.3f s", summary.seconds);
    return toOneLine(in.name()) + ": " + std::to_string(summary.shapes) + " shapes, " +
           std::to_string(summary.polygons) + " polygons, " + std::to_string(summary.points) + " points, " +
           seconds.data();
}

}  // namespace

void runImport(CommandContext& context, const ImportArguments& arguments) {
    const ScenePtr scene = context.host().makeScene();
    const InputFile in = openInput(arguments.in);
    LogFile log(context.terminal(), arguments.log, in);
    const Drawing drawing = openForImport(context, in, arguments);
    const InterruptScope interruptScope;
    const ImportOptions options{static_cast<uint64_t>(arguments.cancelAfter)};
    const ImportSummary summary = explainingRefusal(
        drawing, Purpose::kScene, [&] { return importFile(context.host(), *scene, drawing, options); });
    warnOfSilentLosses(context.terminal(), drawing);
    OutputFile out = openOutput(arguments.out, "write");
    writeScene(*scene, out);
    log.commit();
    if (isStandardStream(arguments.out)) {
        out.commit();
        context.terminal().note(lineOf(in, summary));
        return;
    }
    if (!context.terminal().isQuiet())
        std::printf("%s -> %s\n", lineOf(in, summary).c_str(), toOneLine(arguments.out).c_str());
    requirePrinted();  // before the file gets its name: there is none without its summary
    out.commit();
}

void runExport(CommandContext& context, const ExportArguments& arguments) {
    const ScenePtr scene = context.host().makeScene();
    const InputFile in = openInput(arguments.in);
    readSceneFile(*scene, in);
    LogFile log(context.terminal(), arguments.log, in);
    OutputFile out = openOutput(arguments.out, "save");
    const InterruptScope interruptScope;
    exportScene(context.host(), *scene, out, arguments.options);
    log.commit();
    out.commit();
}

void runRoundTrip(CommandContext& context, const DrawingArguments& arguments) {
    const ScenePtr scene = context.host().makeScene();
    const InputFile in = openInput(arguments.in);
    LogFile log(context.terminal(), arguments.log, in);
    const Drawing drawing = openForImport(context, in, arguments);
    const InterruptScope interruptScope;
    explainingRefusal(drawing, Purpose::kScene, [&] { importFile(context.host(), *scene, drawing); });
    warnOfSilentLosses(context.terminal(), drawing);
    OutputFile out = openOutput(arguments.out, "save");
    explainingRefusal(drawing, Purpose::kScene, [&] { exportScene(context.host(), *scene, out); });
    log.commit();
    out.commit();
}

void runPreview(CommandContext& context, const PreviewArguments& arguments) {
    const ScenePtr scene = context.host().makeScene();
    const InputFile in = openInput(arguments.in);
    LogFile log(context.terminal(), arguments.log, in);
    Drawing drawing;
    if (isSceneFile(in)) {
        readSceneFile(*scene, in);
    } else {
        drawing = openForImport(context, in, arguments);
        const InterruptScope interruptScope;
        explainingRefusal(drawing, Purpose::kScene, [&] { importFile(context.host(), *scene, drawing); });
        warnOfSilentLosses(context.terminal(), drawing);
    }
    log.commit();
    PreviewFrame frame{arguments.page};
    if (!drawing.name().empty()) {
        const Terminal::MessagesHeld held(context.terminal());
        frame.place = findDrawing(context.host(), *scene, drawing, frame.page);
    }
    if (frame.page && !hasPage(*scene, frame)) {
        throw OperationError(in.name(), "draw", kTzNotFound, "the drawing has neither a view box nor a size");
    }
    std::string bytes;
    inStep(in.name(), "draw", [&] {
        const QImage picture = drawScene(*scene, arguments.size, frame);
        const Progress progress(context.terminal(), "compressing " + arguments.out);
        bytes = pictureBytes(picture, outputFormat(arguments.out, pictureFormats()));
    });
    OutputFile out = openOutput(arguments.out, "write");
    out.write(bytes);
    out.commit();
}

}  // namespace tzhost
