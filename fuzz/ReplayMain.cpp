// SPDX-License-Identifier: Zlib
// The main of a harness built without libFuzzer: it runs the harness once on each file named on
// its command line, and on each file of each folder named, in the order of their names. The
// build registers one test case per committed corpus file with it, so every compiler and every
// sanitizer build replays the corpus that the fuzz build grows. A failing input fails as it would
// under libFuzzer: the harness aborts, or the sanitizer reports; the file's name is printed first.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> Inputs(int argc, char** argv) {
    std::vector<fs::path> inputs;
    for (int i = 1; i < argc; ++i) {
        const fs::path named(argv[i]);
        if (!fs::is_directory(named)) {
            inputs.push_back(named);
            continue;
        }
        std::vector<fs::path> inside;
        for (const auto& entry : fs::directory_iterator(named))
            if (entry.is_regular_file())
                inside.push_back(entry.path());
        std::sort(inside.begin(), inside.end());
        inputs.insert(inputs.end(), inside.begin(), inside.end());
    }
    return inputs;
}

std::vector<std::uint8_t> Bytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot read the input " + path.string());
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

} // namespace

int main(int argc, char** argv) {
    try {
        const std::vector<fs::path> inputs = Inputs(argc, argv);
        if (inputs.empty()) {
            std::fprintf(stderr, "usage: %s <input file or folder>...\n", argv[0]);
            return 2;
        }
        for (const fs::path& path : inputs) {
            std::printf("Running: %s\n", path.string().c_str());
            std::fflush(stdout); // the name is out before a crash
            const std::vector<std::uint8_t> bytes = Bytes(path);
            LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
        }
        std::printf("Executed %s inputs\n", std::to_string(inputs.size()).c_str());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", argv[0], error.what());
        return 1;
    }
    return 0;
}
