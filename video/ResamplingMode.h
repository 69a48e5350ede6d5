#pragma once

#include "foundation/BilingualText.h"
#include "settings/ValueText.h"

#include <cstdint>
#include <span>

namespace Quorvex::Platform::Video {

/// How an image is brought to the size on screen. The values are kept in settings files.
enum class EnumResamplingMode : std::int32_t { Cubic = 0, Linear = 1, Nearest = 2, Area = 3 };

/// A mode with its name in the settings dialog.
struct ResamplingModeName {
    EnumResamplingMode mode;
    BilingualText name;
};

/// The four modes in the order of their values.
std::span<const ResamplingModeName> ResamplingModeNames();

} // namespace Quorvex::Platform::Video

namespace Quorvex {

template <>
struct Keywords<Platform::Video::EnumResamplingMode> {
    using Mode = Platform::Video::EnumResamplingMode;
    static constexpr Keyword<Mode> table[] = {
        {Mode::Cubic, "Cubic"}, {Mode::Linear, "Linear"}, {Mode::Nearest, "Nearest"}, {Mode::Area, "Area"}};
};

} // namespace Quorvex
