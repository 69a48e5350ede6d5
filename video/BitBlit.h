#pragma once

#include <cstdint>

namespace Quorvex::Platform::Video {

/// Pixels that somebody else owns: 32-bit BGRA, or 16-bit 5-6-5.
struct BlitSurface {
    void* bits = nullptr;    ///< First pixel in memory.
    std::int32_t pitch = 0;  ///< Pixels from one row in memory to the next; also the surface's width.
    std::int32_t height = 0; ///< Rows; negative if the rows lie bottom-up.
};

/// A rectangle of pixels to carry from one surface to another. Positions count from the top left and may be negative;
/// the operations carry what lies within both surfaces.
struct BitBlit {
    BlitSurface source;
    BlitSurface destination;
    std::int32_t sourceX = 0;
    std::int32_t sourceY = 0;
    std::int32_t destinationX = 0;
    std::int32_t destinationY = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;

    /// BGRA to BGRA. Source and destination may be one surface: rows and pixels are then moved in the order in which
    /// none is overwritten before it is read.
    void Copy() const;
    /// BGRA over BGRA, by the source's alpha. One surface for both is reported as "BitBlit: invalid Func" and raises
    /// Exception.
    void Blend() const;
    /// BGRA to 5-6-5; low bits are dropped.
    void CopyTo565() const;
    /// BGRA over 5-6-5, blended with 8 bits a channel.
    void BlendTo565() const;
};

} // namespace Quorvex::Platform::Video
