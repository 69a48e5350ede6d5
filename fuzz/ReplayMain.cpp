#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

// Stands in for libFuzzer where that is not linked: runs the target once on each file named, or found below a folder
// named, on the command line. A crash ends the program and so names the file, which is printed first.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> FilesBelow(const fs::path& place) {
    if (!fs::is_directory(place)) {
        return {place};
    }
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(place)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    // The order of a folder differs from machine to machine.
    std::sort(files.begin(), files.end());
    return files;
}

bool Replay(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "%s: cannot be read\n", path.string().c_str());
        return false;
    }
    const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    std::printf("%s\n", path.string().c_str());
    std::fflush(stdout);
    // A copy of exactly the file's size lets the sanitizer see a read one byte past its end.
    const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(input.data(), input.size());
    return true;
}

int ReplayAll(int count, char** names) {
    std::size_t replayed = 0;
    bool failed = false;
    for (int i = 1; i < count; ++i) {
        for (const fs::path& path : FilesBelow(names[i])) {
            failed = !Replay(path) || failed;
            ++replayed;
        }
    }
    std::printf("%zu inputs replayed\n", replayed);
    return failed || replayed == 0 ? 1 : 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return ReplayAll(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
