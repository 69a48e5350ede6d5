#pragma once

#include "video/software/QuadSampling.h"

namespace Quorvex::Platform::Video::Software {

/// Where resampled pixels go. Not owned.
struct PixelTarget {
    Color* bits; ///< Rows WIDTH pixels apart, top-down.
    std::uint32_t width;
    std::uint32_t height;

    PixelRegion Whole() const;
    Color* At(std::int32_t x, std::int32_t y) const { return bits + std::size_t(y) * width + std::size_t(x); }
};

/// The pixel program of a mode at one position.
template <class Sample>
Color ShadePlain(EnumResamplingMode mode, const QuadSampling::Row::Position& position, const ImageView<Sample>& image,
                 const AreaFootprint& footprint) {
    switch (mode) {
    case EnumResamplingMode::Cubic:
        return ShadeCubic(position.x, position.y, image);
    case EnumResamplingMode::Linear:
        return ShadeLinear(position.x, position.y, image);
    case EnumResamplingMode::Nearest:
        return ShadeNearest(position.x, position.y, image);
    case EnumResamplingMode::Area:
        break;
    }
    return ShadeArea(position.x, position.y, image, footprint);
}

/// Draws what of the image rectangle lies in the region, pixel by pixel with the pixel programs: this is how the
/// picture is defined. Raises Exception "unknown color type", and with empty text for an image without pixels or one
/// that cannot be locked.
void RenderPlain(const PixelTarget& target, const Data::ImageBase& image, const ImageRect& rect,
                 const PixelRegion& region);

} // namespace Quorvex::Platform::Video::Software
