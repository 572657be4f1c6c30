// Numbers come from a generator of our own: the library's distributions differ between systems.
#include "bench/Documents.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

namespace tzbench {
namespace {

namespace fs = std::filesystem;

class Numbers {
  public:
    // Below `bound`, which is at least 1.
    uint32_t below(uint32_t bound) {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        return static_cast<uint32_t>(state_ >> 33U) % bound;
    }
    // From 0 to `bound`, with two digits behind the point.
    double upTo(uint32_t bound) { return below(bound * 100) / 100.0; }

  private:
    uint64_t state_ = 42;
};

class Writer {
  public:
    explicit Writer(const fs::path& file) : file_(std::fopen(file.c_str(), "wb")) {
        if (!file_) throw std::runtime_error("cannot write " + file.native());
    }
    ~Writer() { std::fclose(file_); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    void operator()(const char* format, ...) __attribute__((format(printf, 2, 3))) {
        va_list arguments;
        va_start(arguments, format);
        std::vfprintf(file_, format, arguments);
        va_end(arguments);
    }

    Numbers numbers;

  private:
    std::FILE* file_;
};

// ---- Scenes -------------------------------------------------------------------------------------

void writeRect(Writer& write) {
    Numbers& n = write.numbers;
    write("<rect x=\"%g\" y=\"%g\" width=\"%g\" height=\"%g\" fill=\"#%06x\"/>\n", n.upTo(900), n.upTo(900),
          n.upTo(100), n.upTo(100), n.below(0x1000000));
}

void writeBasicShape(Writer& write, uint32_t which) {
    Numbers& n = write.numbers;
    const double x = n.upTo(900);
    const double y = n.upTo(900);
    switch (which % 5) {
        case 0:
            return writeRect(write);
        case 1:
            return write("<circle cx=\"%g\" cy=\"%g\" r=\"%g\" fill=\"none\" stroke=\"#333333\"/>\n", x, y,
                         n.upTo(50));
        case 2:
            return write("<line x1=\"%g\" y1=\"%g\" x2=\"%g\" y2=\"%g\" stroke=\"#aa0000\"/>\n", x, y,
                         x + n.upTo(50), y + n.upTo(50));
        case 3:
            return write("<polygon points=\"%g,%g %g,%g %g,%g\" fill=\"#00aa00\"/>\n", x, y, x + 20, y,
                         x + 10, y + n.upTo(20));
        default:
            return write("<ellipse cx=\"%g\" cy=\"%g\" rx=\"%g\" ry=\"5\" fill=\"#0000aa\"/>\n", x, y,
                         n.upTo(20));
    }
}

void writeStyled(Writer& write, uint32_t index) {
    Numbers& n = write.numbers;
    write(
        "<rect id=\"shape%u\" x=\"%g\" y=\"%g\" width=\"%g\" height=\"%g\" transform=\"rotate(%u)\" "
        "stroke-linejoin=\"round\" opacity=\"0.5\" "
        "style=\"fill:#%06x;fill-opacity:0.8;stroke:#%06x;stroke-width:1.5;stroke-dasharray:4,2\"/>\n",
        index, n.upTo(900), n.upTo(900), n.upTo(100), n.upTo(100), n.below(90), n.below(0x1000000),
        n.below(0x1000000));
}

void writePath(Writer& write) {
    Numbers& n = write.numbers;
    write("<path d=\"M%g,%g", n.upTo(900), n.upTo(900));
    write(" l%g,%g", n.upTo(50), n.upTo(50));
    write(" C%g,%g %g,%g %g,%g", n.upTo(900), n.upTo(900), n.upTo(900), n.upTo(900), n.upTo(900),
          n.upTo(900));
    write(" s%g,%g %g,%g", n.upTo(50), n.upTo(50), n.upTo(50), n.upTo(50));
    write(" Q%g,%g %g,%g", n.upTo(900), n.upTo(900), n.upTo(900), n.upTo(900));
    write(" a%g,%g %u 0 1 %g,%g", 10 + n.upTo(40), 10 + n.upTo(40), n.below(90), n.upTo(50), n.upTo(50));
    write(" z m%g,%g h10 v10 h-10 z\" fill=\"none\" stroke=\"#%06x\"/>\n", n.upTo(50), n.upTo(50),
          n.below(0x1000000));
}

void writeScene(Writer& write, SceneKind kind, uint32_t shapes) {
    constexpr uint32_t kGroup = 20;
    constexpr uint32_t kDepth = 100;
    constexpr uint32_t kOnLevel = 10;
    write(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"1000\" height=\"1000\" viewBox=\"0 0 1000 "
        "1000\">\n");
    for (uint32_t i = 0; i < shapes; ++i) {
        switch (kind) {
            case SceneKind::kFlat:
                writeRect(write);
                break;
            case SceneKind::kGrouped:
                if (i % kGroup == 0)
                    write("%s<g id=\"group%u\" fill=\"none\">\n", i ? "</g>\n" : "", i / kGroup);
                writeBasicShape(write, i);
                break;
            case SceneKind::kNested:
                if (i % (kDepth * kOnLevel) == 0 && i > 0) {
                    for (uint32_t level = 0; level < kDepth; ++level) write("</g>\n");
                }
                if (i % kOnLevel == 0) write("<g id=\"level%u\">\n", i / kOnLevel);
                writeRect(write);
                break;
            case SceneKind::kStyled:
                writeStyled(write, i);
                break;
            case SceneKind::kPaths:
                writePath(write);
                break;
        }
    }
    if (kind == SceneKind::kGrouped) write("</g>\n");
    if (kind == SceneKind::kNested) {
        const uint32_t open = ((shapes - 1) % (kDepth * kOnLevel)) / kOnLevel + 1;
        for (uint32_t level = 0; level < open; ++level) write("</g>\n");
    }
    write("</svg>\n");
}

// ---- Pictures -----------------------------------------------------------------------------------

void writeGradients(Writer& write, uint32_t count) {
    write("<defs>\n");
    for (uint32_t i = 0; i < count; ++i) {
        write(
            "<linearGradient id=\"g%u\" x2=\"1\" y2=\"%g\"><stop offset=\"0\" stop-color=\"#%06x\"/>"
            "<stop offset=\"1\" stop-color=\"#%06x\"/></linearGradient>\n",
            i, i % 10 / 10.0, write.numbers.below(0x1000000), write.numbers.below(0x1000000));
    }
    write("</defs>\n");
}

void writeGradientPaths(Writer& write, uint32_t gradients) {
    constexpr uint32_t kShapes = 10000;
    Numbers& n = write.numbers;
    writeGradients(write, gradients);
    for (uint32_t i = 0; i < kShapes; ++i) {
        write("<path d=\"M%g,%g", n.upTo(1000), n.upTo(1000));
        write(" q%g,%g %g,%g", n.upTo(20), n.upTo(20), n.upTo(20), n.upTo(20));
        write(" c%g,%g %g,%g %g,%g z\" fill=\"url(#g%u)\"/>\n", n.upTo(20), n.upTo(20), n.upTo(20),
              n.upTo(20), n.upTo(20), n.upTo(20), i % gradients);
    }
}

void writeFlatRects(Writer& write, uint32_t shapes, uint32_t side) {
    Numbers& n = write.numbers;
    for (uint32_t i = 0; i < shapes; ++i) {
        write("<rect x=\"%g\" y=\"%g\" width=\"%g\" height=\"%g\" fill=\"#%06x\"/>\n", n.upTo(1000),
              n.upTo(1000), n.upTo(side), n.upTo(side), n.below(0x1000000));
    }
}

void writeIcon(Writer& write) {
    writeGradients(write, 2);
    write("<circle cx=\"512\" cy=\"512\" r=\"480\" fill=\"url(#g0)\"/>\n");
    for (uint32_t i = 0; i < 10; ++i) {
        write(
            "<path d=\"M512,512 q%u,-200 0,-400 q-%u,200 0,400 z\" transform=\"rotate(%u 512 512)\" "
            "fill=\"url(#g1)\" stroke=\"#203040\" stroke-width=\"4\" fill-opacity=\"0.7\"/>\n",
            60 + i, 60 + i, i * 36);
    }
}

void writeLargeCurves(Writer& write) {
    for (uint32_t i = 0; i < 5; ++i) {
        write(
            "<path d=\"M%u,1000 C%u,-400 %u,1400 %u,20\" fill=\"none\" stroke=\"#%06x\" "
            "stroke-width=\"30\"/>\n",
            20 + i * 10, 200 + i * 50, 700 - i * 50, 1000 - i * 10, write.numbers.below(0x1000000));
    }
}

void writePicture(Writer& write, PictureKind kind) {
    write("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%u\" height=\"%u\" viewBox=\"0 0 %u %u\">\n",
          kPictureSide, kPictureSide, kPictureSide, kPictureSide);
    switch (kind) {
        case PictureKind::kIcon:
            writeIcon(write);
            break;
        case PictureKind::kRects:
            writeFlatRects(write, 10000, 24);
            break;
        case PictureKind::kManyRects:
            writeFlatRects(write, 100000, 8);
            break;
        case PictureKind::kGradients40:
            writeGradientPaths(write, 40);
            break;
        case PictureKind::kGradients200:
            writeGradientPaths(write, 200);
            break;
        case PictureKind::kLargeCurves:
            writeLargeCurves(write);
            break;
    }
    write("</svg>\n");
}

fs::path makeFolder() {
    std::string name = (fs::temp_directory_path() / "tzbench-XXXXXX").native();
    if (!mkdtemp(name.data())) throw std::runtime_error("cannot make " + name);
    return name;
}

}  // namespace

const char* nameOf(SceneKind kind) {
    static constexpr const char* kNames[] = {"flat", "grouped", "nested", "styled", "paths"};
    return kNames[static_cast<size_t>(kind)];
}

const char* nameOf(PictureKind kind) {
    static constexpr const char* kNames[] = {"icon",
                                             "10000 rects",
                                             "100000 rects",
                                             "10000 paths, 40 gradients",
                                             "10000 paths, 200 gradients",
                                             "large curves"};
    return kNames[static_cast<size_t>(kind)];
}

Documents::Documents() : folder_(makeFolder()) {}

Documents::~Documents() {
    std::error_code error;
    fs::remove_all(folder_, error);
}

fs::path Documents::scene(SceneKind kind, uint32_t shapes) const {
    const fs::path file = folder_ / (nameOf(kind) + std::to_string(shapes) + ".svg");
    if (!fs::exists(file)) {
        Writer write(file);
        writeScene(write, kind, shapes);
    }
    return file;
}

fs::path Documents::picture(PictureKind kind) const {
    const fs::path file = folder_ / (std::string(nameOf(kind)) + ".svg");
    if (!fs::exists(file)) {
        Writer write(file);
        writePicture(write, kind);
    }
    return file;
}

}  // namespace tzbench
