// The commands of tzhost: the arguments of each, and the function that runs it. CommandLine.cpp parses the
// arguments; main() runs the command that was given. Commands throw OperationError, and hold no object of the
// module when they return.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "host/Host.h"
#include "host/SceneLoading.h"
#include "host/SceneSaving.h"
#include "host/commands/NormalizeOption.h"
#include "host/commands/Terminal.h"
#include "host/pyramid/Pyramid.h"

namespace tzhost {

// What a command works with: a host whose module is loaded and whose observer is the terminal.
struct CommandContext {
    Host& host;
    Terminal& terminal;
};

// The arguments of all commands.
struct CommandArguments {
    std::string in;   // the file that the command reads; empty when it is the module
    std::string log;  // `--log`; empty: none
};

// Those of commands that read drawings.
struct DrawingArguments : CommandArguments {
    NormalizeArguments normalize;
};

// Lists what the module has registered.
struct ServersArguments : CommandArguments {
    bool json = false;
};
void runServers(const CommandContext& context, const ServersArguments& arguments);

// ---- Drawings and scenes: SceneCommands.cpp ----

// A drawing into a new scene, and the scene into a scene file.
struct ImportArguments : DrawingArguments {
    std::string scene;
    int64_t cancelAfter = 0;  // signed, or the parser would take -1 for a very large number
};
void runImport(const CommandContext& context, const ImportArguments& arguments);

// A scene file into a drawing.
struct ExportArguments : CommandArguments {
    std::string out;
    ExportOptions options;
};
void runExport(const CommandContext& context, const ExportArguments& arguments);

// A drawing into a scene and back into a drawing, with no scene file between.
struct RoundTripArguments : DrawingArguments {
    std::string out;
};
void runRoundTrip(const CommandContext& context, const RoundTripArguments& arguments);

// A picture of a scene, from a drawing or a scene file.
struct PreviewArguments : DrawingArguments {
    std::string out;
    int size = 1024;  // pixels of the long side
};
constexpr int kLargestPreview = 16384;
void runPreview(const CommandContext& context, const PreviewArguments& arguments);

// ---- Drawings alone: NormalizeCommand.cpp ----

// Any drawing rewritten into the form that survives an import and an export. Needs no module.
struct NormalizeCommandArguments {
    std::string in;
    std::string out;
    std::string notes;
};
void runNormalize(Terminal& terminal, const NormalizeCommandArguments& arguments);

// ---- Drawings as they are: CheckCommand.cpp ----

// What of drawings an import and an export would refuse, drop or change; folders stand for the drawings in
// them. The exit status: 0 all clean, 1 one or more refused, 3 losses.
struct CheckArguments {
    std::vector<std::string> in;
    bool json = false;
    std::string page;  // `--html`; empty: none
};
int runCheck(Terminal& terminal, const CheckArguments& arguments);                 // needs no module
int runCheckPage(const CommandContext& context, const CheckArguments& arguments);  // writes the page as well

// ---- Drawings as images: ImageCommands.cpp ----

// What the host knows of a drawing as an image.
struct ImageInfoArguments : DrawingArguments {
    bool json = false;
};
void runImageInfo(const CommandContext& context, const ImageInfoArguments& arguments);

// One tile of one level, through the tile interface, into a file.
struct TileArguments : DrawingArguments {
    uint32_t level = 0;  // the finest
    uint32_t column = 0;
    uint32_t row = 0;
    std::string out;
    uint32_t threads = 1;
};
// What a tile is written as, by the ending of the file name.
bool isPictureName(std::string_view fileName);
bool isRawName(std::string_view fileName);
void runTile(const CommandContext& context, const TileArguments& arguments);

// One pixel of one level, through the level-sample interface.
struct SampleArguments : DrawingArguments {
    uint32_t level = 0;  // the coarsest
    uint32_t x = 0;
    uint32_t y = 0;
};
void runSample(const CommandContext& context, const SampleArguments& arguments);

// A drawing as tiles in files, with a page to look around in them.
struct PyramidArguments : DrawingArguments {
    std::string folder;
    PyramidOptions options{12, std::max(1U, std::thread::hardware_concurrency())};
};
void runPyramid(const CommandContext& context, const PyramidArguments& arguments);

}  // namespace tzhost
