#pragma once

#include <cstdint>
#include <string>

namespace Quorvex::Platform::Video {

// Fragment programs in GLSL 1.10. Uniforms: image, bufSizeX and bufSizeY (pixels of the texture), and for the area
// programs TCOffsetX and TCOffsetY (half of what a destination pixel covers, in texture coordinates). They fetch source
// pixels at their centres, so that the texture's filter plays no part.

/// The mean over the footprint, with loops of any length.
const std::string& AreaProgramText();
/// The same without loops, for footprints that meet up to ROUNDS + 2 source pixels along each axis.
std::string UnrolledAreaProgramText(std::uint32_t rounds);
/// The Catmull-Rom spline over 4 x 4 source pixels.
const std::string& CubicProgramText();

} // namespace Quorvex::Platform::Video
