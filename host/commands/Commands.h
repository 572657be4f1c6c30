// The commands of tzhost: the arguments of each, and the function that runs it. CommandLine.cpp parses the
// arguments; main() runs the command that was given. Commands throw OperationError, and hold no object of the
// module when they return.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "host/SceneLoading.h"
#include "host/SceneSaving.h"
#include "host/commands/CommandContext.h"
#include "host/commands/FileArguments.h"
#include "host/pyramid/Pyramid.h"

namespace tzhost {

// The arguments of all commands; those that a command does not have stay empty.
struct CommandArguments : CommandFiles {
    std::vector<std::string> inputs;  // of a command that takes several
};

// Those of commands that read drawings.
struct DrawingArguments : CommandArguments {
    bool normalize = false;
};

// Lists what the module has registered.
struct ServersArguments : CommandArguments {
    bool json = false;
};
void runServers(CommandContext& context, const ServersArguments& arguments);

// ---- Drawings and scenes: SceneCommands.cpp ----

// A drawing into a new scene, and the scene into a scene file.
struct ImportArguments : DrawingArguments {
    int64_t cancelAfter = 0;  // signed, or the parser would take -1 for a very large number
};
void runImport(CommandContext& context, const ImportArguments& arguments);

// A scene file into a drawing.
struct ExportArguments : CommandArguments {
    ExportOptions options;
};
void runExport(CommandContext& context, const ExportArguments& arguments);

// A drawing into a scene and back into a drawing, with no scene file between.
void runRoundTrip(CommandContext& context, const DrawingArguments& arguments);

// A picture of a scene, from a drawing or a scene file.
struct PreviewArguments : DrawingArguments {
    int size = 1024;    // pixels of the long side
    bool page = false;  // show the page, not all that is drawn
};
constexpr int kLargestPreview = 16384;
void runPreview(CommandContext& context, const PreviewArguments& arguments);

// ---- Drawings alone: NormalizeCommand.cpp ----

// Any drawing rewritten into the form that survives an import and an export. Needs no module.
void runNormalize(CommandContext& context, const CommandArguments& arguments);

// ---- Drawings as they are: CheckCommand.cpp ----

// What of drawings an import and an export would refuse, drop or change; folders stand for the drawings in
// them. The exit status: 0 all clean, 1 one or more refused, 3 losses.
struct CheckArguments : CommandArguments {  // its output is the page of `--html`
    bool json = false;
};
int runCheck(CommandContext& context, const CheckArguments& arguments);

// ---- Drawings as images: ImageCommands.cpp ----

// What the host knows of a drawing as an image.
struct ImageInfoArguments : DrawingArguments {
    bool json = false;
};
void runImageInfo(CommandContext& context, const ImageInfoArguments& arguments);

// One tile of one level, through the tile interface, into a file.
struct TileArguments : DrawingArguments {
    uint32_t level = 0;  // the finest
    uint32_t column = 0;
    uint32_t row = 0;
    uint32_t threads = 1;
};
std::vector<std::string> tileFormats();
void runTile(CommandContext& context, const TileArguments& arguments);

// One pixel of one level, through the level-sample interface.
struct SampleArguments : DrawingArguments {
    uint32_t level = 0;  // the coarsest
    uint32_t x = 0;
    uint32_t y = 0;
};
void runSample(CommandContext& context, const SampleArguments& arguments);

// A drawing as tiles in files, with a page to look around in them.
struct PyramidArguments : DrawingArguments {  // its output is a folder
    PyramidOptions options{12, std::max(1U, std::thread::hardware_concurrency())};
};
void runPyramid(CommandContext& context, const PyramidArguments& arguments);

}  // namespace tzhost
