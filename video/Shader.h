#pragma once

#include "video/Context.h"

namespace Quorvex::Platform::Video {

/// A program of the device in one of its two languages, or in none: the defaults refuse both.
class ShaderProgram : public Context::ContextChild {
public:
    using ContextChild::ContextChild;

    virtual bool SupportsGLSL() const { return false; }
    /// Compiles a terminated text. Raises Exception "GLSL is not supported!", or what the compiler said.
    virtual void CreateFromGLString(const char* source);
    virtual bool SupportsHLSL() const { return false; }
    /// Compiles a terminated text. Raises Exception "HLSL is not supported!", or what the compiler said.
    virtual void CreateFromHLString(const char* source);
    /// Takes a compiled token stream. Raises Exception "HLSL is not supported!".
    virtual void CreateFromHLStringBinary(std::span<const std::uint32_t> tokens);
    /// Sets a constant of the program by its name.
    virtual void SetFloat(const char* name, float value) = 0;
    virtual void SetInteger(const char* name, std::int32_t value) = 0;
};

class PixelShader : public ShaderProgram {
public:
    using ShaderProgram::ShaderProgram;
};

class VertexShader : public ShaderProgram {
public:
    using ShaderProgram::ShaderProgram;
};

/// A pixel and a vertex program, linked; either may be null until BindShader.
class CombinedShader : public Context::ContextChild {
public:
    using ContextChild::ContextChild;

    virtual void SetPixelShader(SharedPtr<PixelShader> shader) = 0;
    virtual void SetVertexShader(SharedPtr<VertexShader> shader) = 0;
    virtual SharedPtr<PixelShader> GetPixelShader() const = 0;
    virtual SharedPtr<VertexShader> GetVertexShader() const = 0;
};

} // namespace Quorvex::Platform::Video
