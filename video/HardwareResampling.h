#pragma once

#include "video/ImageRect.h"
#include "video/Renderer.h"
#include "video/Shader.h"
#include "video/VertexBuffer2D.h"

#include <array>

namespace Quorvex::Platform::Video {

/// Resampling on a device: one quad, drawn with a program or with the device's own filter. The programs are built once
/// and kept for the life of their context. Window thread only.
class HardwareResampling {
public:
    /// Raises what the shaders raise where a program cannot be built, and Exception with empty text where an unrolled
    /// area program would need more than 19 rounds.
    void Draw(Renderer& renderer, Image2DMeta& image, const ImageRect& rect);
    void DeleteContextObjects();

    /// The area program with loops serves every size; without it, unrolled programs serve devices that have no loops.
    static constexpr bool useLoopShaders = true;
    /// Rounds of an unrolled program at that many source pixels per destination pixel. Raises Exception with empty text
    /// above 19.
    static std::uint32_t UnrolledRounds(double sourcePixelsX, double sourcePixelsY);

private:
    void DrawArea(Context& context, Image2DMeta& image, const ImageRect& rect);
    void DrawCubic(Context& context, Image2DMeta& image, const ImageRect& rect);
    void DrawQuad(Context& context, Image2DMeta& image, const ImageRect& rect);
    const SharedPtr<CombinedShader>& AreaProgram(Context& context, double sourcePixelsX, double sourcePixelsY);

    std::array<SharedPtr<CombinedShader>, 20> unrolledAreaShaders; ///< Indexed by the rounds of their loops.
    SharedPtr<VertexBuffer2D> quad;
    SharedPtr<CombinedShader> areaShader;
    SharedPtr<CombinedShader> cubicShader;
};

} // namespace Quorvex::Platform::Video
