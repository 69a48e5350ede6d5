#pragma once

#include "video/Shader.h"

namespace Quorvex::Platform::Video::Software {

/// Carries the shader objects; there is nothing to link.
class CombinedShader final : public Video::CombinedShader {
public:
    using Video::CombinedShader::CombinedShader;

    void SetPixelShader(SharedPtr<Video::PixelShader> shader) override { pixelShader = std::move(shader); }
    void SetVertexShader(SharedPtr<VertexShader> shader) override { vertexShader = std::move(shader); }
    SharedPtr<Video::PixelShader> GetPixelShader() const override { return pixelShader; }
    SharedPtr<VertexShader> GetVertexShader() const override { return vertexShader; }

private:
    SharedPtr<Video::PixelShader> pixelShader;
    SharedPtr<VertexShader> vertexShader;
};

} // namespace Quorvex::Platform::Video::Software
