// The documents that the benchmarks measure with, made up on the spot: the same bytes each time, in a folder
// of their own that goes with the program. None is kept in the source tree.
#pragma once

#include <cstdint>
#include <filesystem>

namespace tzbench {

// What a scene document is made of.
enum class SceneKind {
    kFlat,     // rectangles directly under the root
    kGrouped,  // groups of twenty shapes of all basic kinds
    kNested,   // columns of a hundred groups in each other, ten rectangles in each
    kStyled,   // rectangles with a style, attributes of presentation and a transform
    kPaths,    // paths with lines, cubic and quadratic curves, arcs and a second sub-path
};
const char* nameOf(SceneKind kind);

// What a picture for tiles is made of.
enum class PictureKind {
    kIcon,          // a dozen curves with two gradients
    kRects,         // 10,000 flat rectangles
    kManyRects,     // 100,000 of them
    kGradients40,   // 10,000 paths that share 40 gradients
    kGradients200,  // 10,000 paths that share 200
    kLargeCurves,   // five curves across the whole picture
};
const char* nameOf(PictureKind kind);

// All pictures are squares of this side, so that a tile of any level is a whole part of them.
constexpr uint32_t kPictureSide = 1024;

class Documents {
  public:
    Documents();
    ~Documents();
    Documents(const Documents&) = delete;
    Documents& operator=(const Documents&) = delete;

    // The file of a document, made when it is asked for the first time.
    std::filesystem::path scene(SceneKind kind, uint32_t shapes) const;
    std::filesystem::path picture(PictureKind kind) const;

    // A name for something to write.
    std::filesystem::path output(const char* name) const { return folder_ / name; }

  private:
    std::filesystem::path folder_;
};

}  // namespace tzbench
