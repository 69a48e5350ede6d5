// load_bench FILE RUNS: loads a file again and again, from its name to the finished image, and prints the milliseconds
// of each run on a line of its own.

#include "tools/CommandLine.h"
#include "tools/LoadedFile.h"
#include "video/software/SoftwareContext.h"

#include <chrono>

using namespace Quorvex;

int main(int argc, char** argv) {
    return Tools::RunReportingFailure("load_bench", [&] {
        if (argc != 3)
            throw std::invalid_argument("Usage: load_bench FILE RUNS");
        const String path = Tools::PathArgument(argv[1]);
        const SharedPtr<Platform::Video::Context> context = MakeShared<Platform::Video::Software::SoftwareContext>();
        for (std::int32_t run = Tools::NumberArgument(argv[2]); run > 0; --run) {
            const auto start = std::chrono::steady_clock::now();
            const Tools::LoadedFile loaded = Tools::Load(path, ET::Img::ImageIndex::Default, context);
            const std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - start;
            std::printf("%.3f\n", elapsed.count());
        }
    });
}
