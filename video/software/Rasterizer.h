#pragma once

#include "video/software/PixelShader.h"
#include "video/software/Triangle.h"

namespace Quorvex::Platform::Video::Software {

// One routine per pixel program and sample type, instantiated for the whole list in a file of its own. Each raises what
// Barycentric raises for a triangle without area. The parameter's position is moved along.

/// The flat colour, which needs no weights.
void RasterizeFlat(Triangle triangle, const RasterTarget& target, const PixelShaderParameter<void>& parameter);

template <class Sample>
void RasterizeNearest(Triangle triangle, const RasterTarget& target, PixelShaderParameter<Sample>& parameter);

template <class Sample>
void RasterizeNearestWithColorization(Triangle triangle, const RasterTarget& target,
                                      PixelShaderParameter<Sample>& parameter);

/// One virtual call per pixel.
template <class Sample>
void RasterizeShader(Triangle triangle, const RasterTarget& target, PixelShaderParameter<Sample>& parameter,
                     const PixelShader& shader);

} // namespace Quorvex::Platform::Video::Software
