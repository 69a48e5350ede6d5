#include "video/software/SoftwareRenderer.h"

#include "video/software/SoftwareContext.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace Quorvex::Platform::Video::Software {

namespace {

constexpr std::uint32_t bytesPerPixel = 4;

/// The buffer is plain memory: both directions are the same.
class ColorBufferLock final : public Renderer::Lock {
public:
    ColorBufferLock(Color* pixels, std::uint32_t width, std::uint32_t height)
        : bits(reinterpret_cast<std::uint8_t*>(pixels)), pitch(static_cast<std::int32_t>(width * bytesPerPixel)),
          rows(static_cast<std::int32_t>(height)) {}

    const std::uint8_t* ReadBits() const override { return bits; }
    std::int32_t ReadPitch() const override { return pitch; }
    std::uint8_t* WriteBits() const override { return bits; }
    std::int32_t WritePitch() const override { return pitch; }
    BufferFormat Format() const override { return BufferFormat::BGRA32; }
    std::int32_t Height() const override { return rows; }

private:
    std::uint8_t* bits;
    std::int32_t pitch;
    std::int32_t rows;
};

std::size_t PixelCount(std::uint32_t width, std::uint32_t height) {
    // A pitch has to fit 31 bits, and the whole buffer the address space.
    constexpr std::uint32_t largestSide = std::numeric_limits<std::int32_t>::max() / bytesPerPixel;
    const std::uint64_t count = static_cast<std::uint64_t>(width) * height;
    if (width > largestSide || height > largestSide ||
        count > static_cast<std::uint64_t>(std::numeric_limits<std::ptrdiff_t>::max()) / bytesPerPixel)
        throw std::bad_alloc();
    return static_cast<std::size_t>(count);
}

Color Premultiplied(const Color& color) {
    const auto product = [&](std::uint32_t channel) {
        return static_cast<std::uint8_t>((channel * color.alpha) / 255);
    };
    return {product(color.blue), product(color.green), product(color.red), color.alpha};
}

} // namespace

void SoftwareRenderer::SetSize(std::uint32_t newWidth, std::uint32_t newHeight) {
    if (newWidth == width && newHeight == height)
        return;
    colorBuffer.reset(new Color[PixelCount(newWidth, newHeight)]());
    Renderer::SetSize(newWidth, newHeight);
}

void SoftwareRenderer::BeginPaint() {
    Context& device = *GetContext();
    const Color color = Premultiplied(ToColor(device.clearColor));
    const std::size_t count = PixelCount(width, height);
    // Four equal bytes, as most clear colours are, need no pattern.
    if (color.blue == color.green && color.blue == color.red && color.blue == color.alpha && count != 0)
        std::memset(static_cast<void*>(colorBuffer.get()), color.blue, count * bytesPerPixel);
    else
        std::fill_n(colorBuffer.get(), count, color);
    device.clipLeft = 0;
    device.clipTop = 0;
    device.clipRight = static_cast<std::int32_t>(width);
    device.clipBottom = static_cast<std::int32_t>(height);
    // A frame that an exception broke off has left its offset behind.
    device.translateX = 0;
    device.translateY = 0;
}

void SoftwareRenderer::DisableColorOverride() {
    static_cast<SoftwareContext&>(*GetContext()).DisableColorOverride();
}

void SoftwareRenderer::SetColorOverride(const Data::ColorBGRA<float>& color) {
    static_cast<SoftwareContext&>(*GetContext()).SetColorOverride(color);
}

bool SoftwareRenderer::Present() {
    if (window)
        PresentToWindow(*window);
    return true;
}

SharedPtr<Renderer::Lock> SoftwareRenderer::LockColorBuffer() {
    return SharedPtr<Lock>(new ColorBufferLock(colorBuffer.get(), width, height));
}

void SoftwareRenderer::PresentToWindow(IWindowSurface& surface) {
    if (width == 0 || height == 0)
        return;
    const auto* const bits = reinterpret_cast<const std::uint8_t*>(colorBuffer.get());
    if (surface.IsLayered())
        surface.ShowWithAlpha(bits, width, height, width * bytesPerPixel);
    else
        surface.ShowOpaque(bits, width, height, width * bytesPerPixel);
}

} // namespace Quorvex::Platform::Video::Software
