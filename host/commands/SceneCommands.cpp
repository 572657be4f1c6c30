// tzhost import, export, roundtrip and preview.
#include <cstdio>
#include <filesystem>

#include "host/commands/Commands.h"
#include "host/commands/LogFile.h"
#include "host/commands/Refusal.h"
#include "host/core/OperationError.h"
#include "host/core/Utf8.h"
#include "host/io/Files.h"
#include "host/preview/Preview.h"
#include "host/pyramid/TilePixels.h"
#include "host/scenefile/SceneReader.h"
#include "host/scenefile/SceneWriter.h"

namespace tzhost {
namespace {

bool isSceneFile(const std::string& fileName) {
    const std::string extension = std::filesystem::path(fileName).extension().native();
    return extension == ".json" || extension == ".JSON";
}

}  // namespace

void runImport(const CommandContext& context, const ImportArguments& arguments) {
    const ScenePtr scene = context.host.makeScene();
    LogFile log(context.terminal, arguments.log, arguments.in);
    const Drawing drawing = openDrawing(context.terminal, arguments.in, arguments.normalize);
    const InterruptScope interruptScope;
    const ImportOptions options{static_cast<uint64_t>(arguments.cancelAfter)};
    const ImportSummary summary = explainingRefusal(
        drawing, CheckFor::kScene, [&] { return importFile(context.host, *scene, drawing, options); });
    warnOfSilentLosses(context.terminal, drawing);
    OutputFile out(arguments.scene, "write");
    writeScene(*scene, out);
    log.commit();
    std::printf(
        "%s: %llu shapes, %llu polygons, %llu points, %.3f s -> %s\n", toOneLine(arguments.in).c_str(),
        static_cast<unsigned long long>(summary.shapes), static_cast<unsigned long long>(summary.polygons),
        static_cast<unsigned long long>(summary.points), summary.seconds, toOneLine(arguments.scene).c_str());
    requirePrinted();  // before the file gets its name: there is none without its summary
    out.commit();
}

void runExport(const CommandContext& context, const ExportArguments& arguments) {
    const ScenePtr scene = context.host.makeScene();
    readSceneFile(*scene, arguments.in);
    LogFile log(context.terminal, arguments.log, arguments.in);
    OutputFile out(arguments.out, "save");
    const InterruptScope interruptScope;
    exportScene(context.host, *scene, out, arguments.options);
    log.commit();
    out.commit();
}

void runRoundTrip(const CommandContext& context, const RoundTripArguments& arguments) {
    const ScenePtr scene = context.host.makeScene();
    LogFile log(context.terminal, arguments.log, arguments.in);
    const Drawing drawing = openDrawing(context.terminal, arguments.in, arguments.normalize);
    const InterruptScope interruptScope;
    explainingRefusal(drawing, CheckFor::kScene, [&] { importFile(context.host, *scene, drawing); });
    warnOfSilentLosses(context.terminal, drawing);
    OutputFile out(arguments.out, "save");
    explainingRefusal(drawing, CheckFor::kScene, [&] { exportScene(context.host, *scene, out); });
    log.commit();
    out.commit();
}

void runPreview(const CommandContext& context, const PreviewArguments& arguments) {
    const ScenePtr scene = context.host.makeScene();
    LogFile log(context.terminal, arguments.log, arguments.in);
    if (isSceneFile(arguments.in)) {
        readSceneFile(*scene, arguments.in);
    } else {
        const Drawing drawing = openDrawing(context.terminal, arguments.in, arguments.normalize);
        const InterruptScope interruptScope;
        explainingRefusal(drawing, CheckFor::kScene, [&] { importFile(context.host, *scene, drawing); });
        warnOfSilentLosses(context.terminal, drawing);
    }
    log.commit();
    std::string png;
    inStep(arguments.in, "draw", [&] {
        const QImage picture = drawScene(*scene, arguments.size);
        const Progress progress(context.terminal, "compressing " + arguments.out);
        png = pngBytes(picture);
    });
    OutputFile out(arguments.out, "write");
    out.write(png);
    out.commit();
}

}  // namespace tzhost
