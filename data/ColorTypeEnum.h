#pragma once

#include "data/ColorBGRA.h"

#include <cstdint>

/// The closed list of the twenty sample types: X(value, name, sample). All enumerations, lock operations and dispatches
/// over sample types are made from it, so that no second list can disagree.
#define QUORVEX_GREY_SAMPLE_TYPES(X)                                                                                   \
    X(0, SInt8, std::int8_t)                                                                                           \
    X(1, SInt16, std::int16_t)                                                                                         \
    X(2, SInt32, std::int32_t)                                                                                         \
    X(3, SInt64, std::int64_t)                                                                                         \
    X(4, UInt8, std::uint8_t)                                                                                          \
    X(5, UInt16, std::uint16_t)                                                                                        \
    X(6, UInt32, std::uint32_t)                                                                                        \
    X(7, UInt64, std::uint64_t)                                                                                        \
    X(8, Float32, float)                                                                                               \
    X(9, Float64, double)

#define QUORVEX_BGRA_SAMPLE_TYPES(X)                                                                                   \
    X(10, BGRASInt8, ::Quorvex::Data::ColorBGRA<std::int8_t>)                                                          \
    X(11, BGRASInt16, ::Quorvex::Data::ColorBGRA<std::int16_t>)                                                        \
    X(12, BGRASInt32, ::Quorvex::Data::ColorBGRA<std::int32_t>)                                                        \
    X(13, BGRASInt64, ::Quorvex::Data::ColorBGRA<std::int64_t>)                                                        \
    X(14, BGRAUInt8, ::Quorvex::Data::ColorBGRA<std::uint8_t>)                                                         \
    X(15, BGRAUInt16, ::Quorvex::Data::ColorBGRA<std::uint16_t>)                                                       \
    X(16, BGRAUInt32, ::Quorvex::Data::ColorBGRA<std::uint32_t>)                                                       \
    X(17, BGRAUInt64, ::Quorvex::Data::ColorBGRA<std::uint64_t>)                                                       \
    X(18, BGRAFloat32, ::Quorvex::Data::ColorBGRA<float>)                                                              \
    X(19, BGRAFloat64, ::Quorvex::Data::ColorBGRA<double>)

#define QUORVEX_SAMPLE_TYPES(X) QUORVEX_GREY_SAMPLE_TYPES(X) QUORVEX_BGRA_SAMPLE_TYPES(X)

namespace Quorvex::Data {

/// What an image's samples are. The values are fixed: they travel through the plug-in interface and order the
/// factories.
class ColorTypeEnum {
public:
    enum Value : std::uint32_t {
#define QUORVEX_ENUMERATOR(value, name, sample) name = value,
        QUORVEX_SAMPLE_TYPES(QUORVEX_ENUMERATOR)
#undef QUORVEX_ENUMERATOR
    };
    static constexpr std::uint32_t Count = 20;

    explicit ColorTypeEnum(Value type) : ColorType(type) {}

    const Value ColorType;
};

} // namespace Quorvex::Data
