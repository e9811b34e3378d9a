// Runs a fuzz target's entry point over every file of the folders given, in name order, in
// the ordinary (or sanitised) build: the seeds and every input the fuzzer ever crashed on
// stay tested without clang or libFuzzer. Fails when no input was found.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv) {
    namespace fs = std::filesystem;
    std::vector<fs::path> inputs;
    for (int i = 1; i < argc; ++i) {
        std::error_code ec;
        for (const auto& e : fs::directory_iterator(argv[i], ec))
            if (e.is_regular_file()) inputs.push_back(e.path());
    }
    std::sort(inputs.begin(), inputs.end());
    for (const fs::path& p : inputs) {
        std::ifstream in(p, std::ios::binary);
        const std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(in)), {});
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
    std::printf("%zu inputs replayed\n", inputs.size());
    return inputs.empty() ? 1 : 0;
}
