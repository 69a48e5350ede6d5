#pragma once

#include "video/Shader.h"
#include "video/software/PixelPrograms.h"
#include "video/software/ShadeOrder.h"

namespace Quorvex::Platform::Video::Software {

/// What a pixel program gets: the position, and what stays the same for a triangle.
template <class Sample>
struct PixelShaderParameter {
    double u = 0.0; ///< Fractions of the allocated image.
    double v = 0.0;
    Color color;                      ///< The flat colour.
    const Sample* bits;               ///< Locked by the caller, rows AllocatedWidth samples apart.
    SharedPtr<Data::ImageBase> image; ///< Of that sample type.

    PixelShaderParameter(const Color& flatColor, const Sample* lockedBits, SharedPtr<Data::ImageBase> lockedImage)
        : color(flatColor), bits(lockedBits),
          image(std::move(lockedImage)), view{bits, image->AllocatedWidth, image->GetWidth(), image->GetHeight()} {}

    const ImageView<Sample>& View() const { return view; }
    double PositionX() const { return view.allocatedWidth * u; }    ///< Source pixels.
    double PositionY() const { return image->AllocatedHeight * v; } ///< Source pixels.

private:
    ImageView<Sample> view;
};

/// Of a program that reads no image.
template <>
struct PixelShaderParameter<void> {
    Color color;
};

namespace Internal {

/// The operations of a shader's table from the first to the one in SLOT: deriving fixes their order.
template <std::size_t slot>
class ShadeSlot : public ShadeSlot<slot - 1> {
public:
    using ShadeSlot<slot - 1>::ShadeSlot;
    using ShadeSlot<slot - 1>::Shade;
    virtual void Shade(Color& color, const PixelShaderParameter<SampleInSlot<slot>>& parameter) const = 0;
};
template <>
class ShadeSlot<0> : public Video::PixelShader {
public:
    using Video::PixelShader::PixelShader;
    virtual void Shade(Color& color, const PixelShaderParameter<SampleInSlot<0>>& parameter) const = 0;
};

} // namespace Internal

/// A family of pixel programs, one Shade operation per sample type: the colour for one position in an image. Called
/// with a locked image and within its bounds; raises nothing.
class PixelShader : public Internal::ShadeSlot<Data::ColorTypeEnum::Count - 1> {
public:
    template <class Sample>
    using PixelShaderParameter = Software::PixelShaderParameter<Sample>;

    using ShadeSlot::ShadeSlot;

    // These programs have no constants.
    void SetFloat(const char*, float) override {}
    void SetInteger(const char*, std::int32_t) override {}
};

/// Fills the table with the program of S, its ShadePixel, which is one template for all sample types.
template <class S>
class PixelShaderOfType : public PixelShader {
public:
    using PixelShader::PixelShader;

#define QUORVEX_SHADE(value, name, sample)                                                                             \
    void Shade(Color& color, const PixelShaderParameter<sample>& parameter) const final {                              \
        color = static_cast<const S&>(*this).ShadePixel(parameter);                                                    \
    }
    QUORVEX_SAMPLE_TYPES(QUORVEX_SHADE)
#undef QUORVEX_SHADE
};

} // namespace Quorvex::Platform::Video::Software
