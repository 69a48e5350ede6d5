#pragma once

#include "video/software/PixelShader.h"

namespace Quorvex::Platform::Video::Software {

/// The flat colour.
class PixelShaderDefault final : public PixelShaderOfType<PixelShaderDefault> {
public:
    using PixelShaderOfType::PixelShaderOfType;

    template <class Sample>
    static Color ShadePixel(const PixelShaderParameter<Sample>& parameter) {
        return parameter.color;
    }
};

class PixelShaderNearest final : public PixelShaderOfType<PixelShaderNearest> {
public:
    using PixelShaderOfType::PixelShaderOfType;

    template <class Sample>
    static Color ShadePixel(const PixelShaderParameter<Sample>& parameter) {
        return ShadeNearest(parameter.PositionX(), parameter.PositionY(), parameter.View());
    }
};

/// The nearest sample tinted by the flat colour.
class PixelShaderNearestWithColorization final : public PixelShaderOfType<PixelShaderNearestWithColorization> {
public:
    using PixelShaderOfType::PixelShaderOfType;

    template <class Sample>
    static Color ShadePixel(const PixelShaderParameter<Sample>& parameter) {
        return ShadeNearestWithColorization(parameter.PositionX(), parameter.PositionY(), parameter.View(),
                                            parameter.color);
    }
};

class PixelShaderLinear final : public PixelShaderOfType<PixelShaderLinear> {
public:
    using PixelShaderOfType::PixelShaderOfType;

    template <class Sample>
    static Color ShadePixel(const PixelShaderParameter<Sample>& parameter) {
        return ShadeLinear(parameter.PositionX(), parameter.PositionY(), parameter.View());
    }
};

class PixelShaderCubic final : public PixelShaderOfType<PixelShaderCubic> {
public:
    using PixelShaderOfType::PixelShaderOfType;

    template <class Sample>
    static Color ShadePixel(const PixelShaderParameter<Sample>& parameter) {
        return ShadeCubic(parameter.PositionX(), parameter.PositionY(), parameter.View());
    }
};

/// The footprint is set before a draw and stays during it.
class PixelShaderArea final : public PixelShaderOfType<PixelShaderArea>, public AreaFootprint {
public:
    using PixelShaderOfType::PixelShaderOfType;

    template <class Sample>
    Color ShadePixel(const PixelShaderParameter<Sample>& parameter) const {
        return ShadeArea(parameter.PositionX(), parameter.PositionY(), parameter.View(), *this);
    }
};

extern template class PixelShaderOfType<PixelShaderDefault>;
extern template class PixelShaderOfType<PixelShaderNearest>;
extern template class PixelShaderOfType<PixelShaderNearestWithColorization>;
extern template class PixelShaderOfType<PixelShaderLinear>;
extern template class PixelShaderOfType<PixelShaderCubic>;
extern template class PixelShaderOfType<PixelShaderArea>;

} // namespace Quorvex::Platform::Video::Software
