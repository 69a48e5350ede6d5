// decode FILE [--image N] [--content] [--raw OUT]: runs the load path of the program and prints what came of it as one
// line of key=value. N is one-based, 0 the default image, -1 the last; "loaded" counts in the same way, "default" from
// 0. --content does not look at the name. --raw writes the visible rows, tightly packed, in memory order.

#include "codecs/plugin/PluginFactory.h"
#include "data/Dispatch.h"
#include "tools/CommandLine.h"
#include "tools/LoadedFile.h"
#include "video/software/SoftwareContext.h"

#include <charconv>
#include <cstdlib>
#include <cxxabi.h>
#include <fstream>
#include <memory>
#include <typeinfo>

using namespace Quorvex;
using namespace ET::Img;

namespace {

struct Arguments {
    std::string file;
    std::string rawFile;
    std::int32_t index = ImageIndex::Default;
    bool byContentOnly = false;
};

Arguments ParseArguments(int argc, char** argv) {
    Arguments arguments;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--content")
            arguments.byContentOnly = true;
        else if (argument == "--image" && i + 1 < argc)
            arguments.index = Tools::NumberArgument(argv[++i]);
        else if (argument == "--raw" && i + 1 < argc)
            arguments.rawFile = argv[++i];
        else if (argument.rfind("--", 0) != 0 && arguments.file.empty())
            arguments.file = argument;
        else
            throw std::invalid_argument("Usage: decode FILE [--image N] [--content] [--raw OUT]");
    }
    if (arguments.file.empty())
        throw std::invalid_argument("Usage: decode FILE [--image N] [--content] [--raw OUT]");
    return arguments;
}

Tools::LoadedFile Load(const Arguments& arguments) {
    AddPluginsBesideProgram(GetCodecRegistry());
    const SharedPtr<Platform::Video::Context> context = MakeShared<Platform::Video::Software::SoftwareContext>();
    const String path = Tools::PathArgument(arguments.file.c_str());
    return arguments.byContentOnly ? Tools::LoadByContent(path, arguments.index, context)
                                   : Tools::Load(path, arguments.index, context);
}

// The class of the decoder without its namespaces.
std::string NameOf(const ImageFile& decoder) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(typeid(decoder).name(), nullptr, nullptr, &status), std::free);
    const std::string full = name != nullptr ? name.get() : typeid(decoder).name();
    return full.substr(full.rfind(':') + 1);
}

std::string TextOf(double value) {
    char text[32] = {};
    std::to_chars(text, text + sizeof(text) - 1, value);
    return text;
}

void Print(const Tools::LoadedFile& result, const ImageInfo& info) {
    const ImageBase& image = *result.image;
    const ImageFile& decoder = *result.decoder;
    const std::string type = Data::Dispatch(image.ColorType, "unknown color type",
                                            [](auto tag) { return std::string(decltype(tag)::Traits::typeName); });
    std::printf("decoder=%s type=%s width=%u height=%u allocatedWidth=%u allocatedHeight=%u bitsPerPixel=%u count=%u "
                "default=%u loaded=%d incomplete=%d wrongExtension=%d orientation=%u hasAlpha=%u pixelScaleX=%s "
                "pixelScaleY=%s\n",
                NameOf(decoder).c_str(), type.c_str(), image.GetWidth(), image.GetHeight(), image.AllocatedWidth,
                image.AllocatedHeight, info.BitsPerPixel, decoder.GetCount(), decoder.GetDefaultIndex(), result.index,
                decoder.IsIncomplete(), decoder.WrongFilenameExtension, decoder.GetOrientation(), image.HasAlpha,
                TextOf(image.PixelScaleX).c_str(), TextOf(image.PixelScaleY).c_str());
}

void WriteVisibleRows(const ImageBase& image, const std::string& path) {
    std::ofstream out(path, std::ios::binary);
    Data::Dispatch(image.ColorType, "unknown color type", [&](auto tag) {
        const auto lock = decltype(tag)::Traits::LockIn(image, Data::LockMode::ReadOnly);
        const std::size_t rowBytes = lock.Width * sizeof(*lock.Data);
        for (std::uint32_t y = 0; y < lock.Height; ++y)
            out.write(reinterpret_cast<const char*>(lock.Row(y)), static_cast<std::streamsize>(rowBytes));
    });
    if (!out.flush())
        throw std::runtime_error("cannot write " + path);
}

} // namespace

int main(int argc, char** argv) {
    return Tools::RunReportingFailure("decode", [argc, argv] {
        const Arguments arguments = ParseArguments(argc, argv);
        const Tools::LoadedFile result = Load(arguments);
        Print(result, result.decoder->GetLoadedInfo());
        if (!arguments.rawFile.empty())
            WriteVisibleRows(*result.image, arguments.rawFile);
    });
}
