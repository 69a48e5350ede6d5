// render FILE --mode Nearest|Linear|Cubic|Area --rect X0,Y0,X1,Y1 --rotation 0|90|180|270 --size W,H --out OUT
// [--image N] [--renderer Software|OpenGL|Direct3D9]: draws the image through the viewer's resampling onto a cleared
// target, blending off, and writes W*H*4 bytes of blue, green, red and alpha, top row first.

#include "tools/CommandLine.h"
#include "tools/LoadedFile.h"
#include "video/Backends.h"
#include "video/Renderer.h"
#include "video/Resampling.h"
#include "video/WindowSurface.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

using namespace Quorvex;
using namespace Quorvex::Platform::Video;

namespace {

constexpr const char* usage =
    "Usage: render FILE --mode Nearest|Linear|Cubic|Area --rect X0,Y0,X1,Y1 --rotation 0|90|180|270 --size W,H "
    "--out OUT [--image N] [--renderer Software|OpenGL|Direct3D9]";

/// The file under the empty name, and each option under its own.
using Options = std::map<std::string, std::string>;

constexpr const char* neededOptions[] = {"", "--mode", "--rect", "--rotation", "--size", "--out"};

Options ParseOptions(int argc, char** argv) {
    Options options{{"--image", "0"}, {"--renderer", "Software"}};
    const auto isKnown = [&options](const std::string& name) {
        return options.contains(name) ||
               std::find(std::begin(neededOptions), std::end(neededOptions), name) != std::end(neededOptions);
    };
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument.starts_with("--") && isKnown(argument) && i + 1 < argc)
            options[argument] = argv[++i];
        else if (!argument.starts_with("--") && !options.contains(""))
            options[""] = argument;
        else
            throw std::invalid_argument(usage);
    }
    for (const char* needed : neededOptions)
        if (!options.contains(needed))
            throw std::invalid_argument(usage);
    return options;
}

/// Exactly that many whole numbers with commas between them.
std::vector<std::int32_t> ParseNumbers(const std::string& text, std::size_t wanted) {
    std::istringstream stream(text);
    std::vector<std::int32_t> numbers;
    std::string field;
    while (std::getline(stream, field, ','))
        numbers.push_back(Tools::NumberArgument(field));
    if (numbers.size() != wanted)
        throw std::invalid_argument("not " + std::to_string(wanted) + " numbers: " + text);
    return numbers;
}

/// A window that is never shown: the frame is read from the renderer.
class UnseenWindow final : public IWindowSurface {
public:
    void* GetNativeHandle() const override { return nullptr; }
    bool IsLayered() const override { return false; }
    void ShowOpaque(const std::uint8_t*, std::uint32_t, std::uint32_t, std::uint32_t) override {}
    void ShowWithAlpha(const std::uint8_t*, std::uint32_t, std::uint32_t, std::uint32_t) override {}
    void DispatchMouseMessagesAndHide() override {}
    bool IsCompositionEnabled() const override { return false; }
};

template <class T>
T ParseKeyword(const std::string& text) {
    try {
        return ValueText<T>::FromText(text.c_str());
    } catch (const Exception&) {
        throw std::invalid_argument("unknown: " + text);
    }
}

SharedPtr<Context> CreateContext(RendererTypeEnum type, const SharedPtr<IWindowSurface>& window) {
    switch (type) {
    case RendererTypeEnum::OpenGL:
        return CreateOpenGLContext(window);
    case RendererTypeEnum::Direct3D9:
        return CreateDirect3D9Context(window);
    case RendererTypeEnum::Software:
        return CreateSoftwareContext(window);
    }
    throw std::invalid_argument("no renderer");
}

ImageRect ParseRect(const Options& options, std::int32_t width, std::int32_t height) {
    const std::vector<std::int32_t> corners = ParseNumbers(options.at("--rect"), 4);
    ImageRect rect;
    rect.x0 = corners[0];
    rect.y0 = corners[1];
    rect.x1 = corners[2];
    rect.y1 = corners[3];
    rect.rotation = Tools::NumberArgument(options.at("--rotation"));
    if (rect.rotation != 0 && rect.rotation != 90 && rect.rotation != 180 && rect.rotation != 270)
        throw std::invalid_argument("--rotation wants 0, 90, 180 or 270");
    rect.mode = ParseKeyword<EnumResamplingMode>(options.at("--mode"));
    rect.prepared = true;
    rect.clipX1 = width;
    rect.clipY1 = height;
    return rect;
}

void Draw(Context& context, const SharedPtr<Renderer>& renderer, Image2DMeta& image, const ImageRect& rect) {
    context.clearColor = {0.0f, 0.0f, 0.0f, 0.0f};
    context.SetRenderTarget(renderer);
    renderer->BeginPaint();
    renderer->DisableBlending();
    Resampling resampling;
    resampling.Draw(*renderer, image, rect);
    renderer->EndPaint();
    context.ResetTarget();
}

void WriteFrame(Renderer& renderer, const std::string& path) {
    std::ofstream out(std::filesystem::path(path), std::ios::binary);
    const SharedPtr<Renderer::Lock> lock = renderer.LockColorBuffer();
    const std::int64_t pitch = lock->ReadPitch();
    for (std::uint32_t y = 0; y < renderer.GetHeight(); ++y)
        out.write(reinterpret_cast<const char*>(lock->ReadBits() + pitch * y),
                  static_cast<std::streamsize>(renderer.GetWidth()) * 4);
    out.close();
    if (!out)
        throw std::runtime_error("cannot write " + path);
}

void Render(const Options& options) {
    const std::vector<std::int32_t> size = ParseNumbers(options.at("--size"), 2);
    if (size[0] < 1 || size[1] < 1)
        throw std::invalid_argument("--size wants positive numbers");
    ImageRect rect = ParseRect(options, size[0], size[1]);
    const auto type = ParseKeyword<RendererTypeEnum>(options.at("--renderer"));

    const SharedPtr<IWindowSurface> window = MakeShared<UnseenWindow>();
    const SharedPtr<Context> context = CreateContext(type, window);
    const BufferFormat wanted[] = {BufferFormat::BGRA32};
    const SharedPtr<Renderer> renderer = context->CreateRenderer(window, wanted, {});
    renderer->SetSize(static_cast<std::uint32_t>(size[0]), static_cast<std::uint32_t>(size[1]));
    const Tools::LoadedFile file =
        Tools::Load(Tools::PathArgument(options.at("").c_str()), Tools::NumberArgument(options.at("--image")), context);
    Image2DMeta image;
    image.CreateFromMemory(context, file.image);
    rect.source = &image;
    Draw(*context, renderer, image, rect);
    WriteFrame(*renderer, options.at("--out"));
}

} // namespace

int main(int argc, char** argv) {
    return Tools::RunReportingFailure("render", [argc, argv] { Render(ParseOptions(argc, argv)); });
}
