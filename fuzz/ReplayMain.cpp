// The main of a fuzz target without a fuzzer: runs it on every file named, and on every file of a folder
// named. A fault ends the process, as it ends the fuzzer; the last line then names the input.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/FuzzHost.h"

int main(int argc, char** argv) {
    namespace fs = std::filesystem;
    std::vector<fs::path> inputs;
    for (int i = 1; i < argc; ++i) {
        if (!fs::is_directory(argv[i])) {
            inputs.emplace_back(argv[i]);
            continue;
        }
        for (const auto& entry : fs::directory_iterator(argv[i])) inputs.push_back(entry.path());
    }
    std::sort(inputs.begin(), inputs.end());
    for (const fs::path& input : inputs) {
        std::printf("%s\n", input.c_str());
        std::fflush(stdout);
        std::ifstream file(input, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        if (!file) return 1;
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    }
    return inputs.empty() ? 1 : 0;
}
