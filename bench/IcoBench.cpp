// ico_bench FILE RUNS: decodes all images of an icon file that lies in memory, again and again, and prints the
// milliseconds of each run on a line of its own.

#include "codecs/ico/ICODecoder.h"
#include "data/FileStream.h"
#include "data/MemoryStream.h"
#include "tools/CommandLine.h"
#include "video/software/SoftwareContext.h"

#include <chrono>
#include <vector>

using namespace Quorvex;

namespace {

void DecodeAll(const std::vector<std::uint8_t>& file, Platform::Video::Context& context) {
    ET::Img::ICODecoder decoder(MakeShared<MemoryStream>(file.data(), static_cast<std::uint32_t>(file.size())));
    for (std::uint32_t i = 0; i < decoder.GetCount(); ++i) {
        const ET::Img::ImageInfo info = decoder.GetInfo(i);
        decoder.Load(context.CreateImage(info.ColorType, info.Width, info.Height, 0, 0), i);
    }
}

} // namespace

int main(int argc, char** argv) {
    return Tools::RunReportingFailure("ico_bench", [&] {
        if (argc != 3)
            throw std::invalid_argument("Usage: ico_bench FILE RUNS");
        FileStream stream(Tools::PathArgument(argv[1]));
        std::vector<std::uint8_t> file(stream.size());
        stream.read(file.data(), static_cast<std::uint32_t>(file.size()));
        Platform::Video::Software::SoftwareContext context;
        for (std::int32_t run = Tools::NumberArgument(argv[2]); run > 0; --run) {
            const auto start = std::chrono::steady_clock::now();
            DecodeAll(file, context);
            const std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - start;
            std::printf("%.4f\n", elapsed.count());
        }
    });
}
