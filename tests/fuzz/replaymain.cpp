// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds every file of the directories named on the command line to a fuzz
// target once, as libFuzzer would, so that the committed inputs run as an
// ordinary test with any compiler.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

std::vector<std::filesystem::path> InputFiles(int argc, char **argv)
{
    std::vector<std::filesystem::path> files;
    for (int i = 1; i < argc; ++i) {
        if (!std::filesystem::is_directory(argv[i]))
            continue;
        for (const auto &entry : std::filesystem::directory_iterator(argv[i])) {
            if (entry.is_regular_file())
                files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::uint8_t> Bytes(const std::filesystem::path &path)
{
    std::ifstream in(path, std::ios::binary);
    return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

} // namespace

int main(int argc, char **argv)
{
    LLVMFuzzerInitialize(&argc, &argv);
    const std::vector<std::filesystem::path> files = InputFiles(argc, argv);
    for (const std::filesystem::path &file : files) {
        const std::vector<std::uint8_t> bytes = Bytes(file);
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
    std::printf("%zu inputs replayed\n", files.size());
    // A corpus that was not found replays nothing, which must not pass.
    return files.empty() ? 1 : 0;
}
