#include "gui/CaptionColors.h"

#include "foundation/Version.h"

namespace Quorvex::GUI {

namespace {

using Color = CaptionColors::Color;

CaptionColors currentColors;

/// Bits of a 32-bit colour. System colours have red in the lowest byte, the desktop's tint has blue there.
constexpr int lowByte = 0;
constexpr int middleByte = 8;
constexpr int highByte = 16;

float ToFloat(std::uint32_t channel) {
    return static_cast<float>(channel) * 0.003921569f;
}

std::uint32_t Byte(std::uint32_t color, int shift) {
    return (color >> shift) & 0xFF;
}

std::uint32_t Mean(std::uint32_t a, std::uint32_t b) {
    const auto mean = [=](int shift) { return (Byte(a, shift) + Byte(b, shift)) / 2 << shift; };
    return mean(lowByte) | mean(middleByte) | mean(highByte);
}

Color FromSystemColor(std::uint32_t color) {
    return {ToFloat(Byte(color, highByte)), ToFloat(Byte(color, middleByte)), ToFloat(Byte(color, lowByte)), 1.0f};
}

/// The tint laid over the light grey that a caption has without one.
Color Tinted(const IWindowSystem::Colorization& tint) {
    const float balance = static_cast<float>(tint.balancePercent) * 0.01f;
    const auto channel = [&](int shift) {
        return balance * ToFloat(Byte(tint.color, shift)) + (1.0f - balance) * 0.8509804f;
    };
    return {channel(lowByte), channel(middleByte), channel(highByte), 1.0f};
}

// Windows 8 and 8.1: the systems before have caption colours of their own, those after paint captions themselves.
bool TintsCaptions() {
    return IsVersionAtLeast(6, 2, 0) && !IsVersionAtLeast(10, 0, 0);
}

} // namespace

CaptionColors ReadCaptionColors(const IWindowSystem& windowSystem) {
    std::uint32_t active = windowSystem.GetSystemColor(SystemColor::ActiveCaption);
    std::uint32_t inactive = windowSystem.GetSystemColor(SystemColor::InactiveCaption);
    if (windowSystem.HasGradientCaptions().value_or(false)) {
        active = Mean(active, windowSystem.GetSystemColor(SystemColor::GradientActiveCaption));
        inactive = Mean(inactive, windowSystem.GetSystemColor(SystemColor::GradientInactiveCaption));
    }
    CaptionColors colors{
        FromSystemColor(active), FromSystemColor(windowSystem.GetSystemColor(SystemColor::CaptionText)),
        FromSystemColor(inactive), FromSystemColor(windowSystem.GetSystemColor(SystemColor::InactiveCaptionText))};
    if (!TintsCaptions())
        return colors;
    if (const auto tint = windowSystem.GetColorization()) {
        colors.active = Tinted(*tint);
        colors.inactive = {0.92156863f, 0.92156863f, 0.92156863f, 1.0f};
    }
    return colors;
}

const CaptionColors& GetCaptionColors() {
    return currentColors;
}

void SetCaptionColors(const CaptionColors& colors) {
    currentColors = colors;
}

} // namespace Quorvex::GUI
