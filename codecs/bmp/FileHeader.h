#pragma once

#include "settings/Property.h"

namespace ET::Img {

/// The 14 bytes before the info header, which name where the pixels start. Missing in a bitmap from the clipboard.
class BITMAPFILEHEADER final : public Quorvex::CompositeOfProperties {
public:
    static constexpr std::uint32_t sizeBytes = 14;
    static constexpr std::uint16_t signature = 0x4D42; // "BM"

    BITMAPFILEHEADER() : CompositeOfProperties("BITMAPFILEHEADER") {}

    Quorvex::UninitializedProperty<std::uint16_t> usType{"usType", this};
    Quorvex::UninitializedProperty<std::uint32_t> cbSize{"cbSize", this};
    Quorvex::UninitializedProperty<std::int16_t> xHotspot{"xHotspot", this};
    Quorvex::UninitializedProperty<std::int16_t> yHotspot{"yHotspot", this};
    Quorvex::UninitializedProperty<std::uint32_t> offBits{"offBits", this};
};

} // namespace ET::Img
