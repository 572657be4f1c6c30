// tzhost_pages FOLDER: writes tzhost's manual pages and completions, while it is built. They are installed
// from there (host/pages/CMakeLists.txt).
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "host/pages/Completions.h"
#include "host/pages/ManualPages.h"

namespace {

void write(const std::filesystem::path& file, const std::string& text) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    stream.close();
    if (!stream) throw std::filesystem::filesystem_error("not written", file, {});
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    try {
        const std::filesystem::path folder = argv[1];
        const std::vector<tzhost::CommandHelp> help = tzhost::commandHelp();
        for (const tzhost::ManualPage& page : tzhost::manualPages(help))
            write(folder / "man" / page.fileName, page.text);
        write(folder / "bash" / "tzhost", tzhost::bashCompletion(help));
        write(folder / "zsh" / "_tzhost", tzhost::zshCompletion(help));
        write(folder / "fish" / "tzhost.fish", tzhost::fishCompletion(help));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tzhost_pages: %s\n", error.what());
        return 1;
    }
    return 0;
}
