#pragma once

#include "data/Dispatch.h"

#include <array>
#include <cstddef>

namespace Quorvex::Platform::Video::Software {

namespace Internal {

template <std::size_t value>
struct SampleOfValue;
#define QUORVEX_SAMPLE(value, name, sample)                                                                            \
    template <>                                                                                                        \
    struct SampleOfValue<value> {                                                                                      \
        using Type = sample;                                                                                           \
    };
QUORVEX_SAMPLE_TYPES(QUORVEX_SAMPLE)
#undef QUORVEX_SAMPLE

/// Grey before colour, and within them unsigned integers, signed integers, floats.
template <class Sample>
constexpr int ShadeRank() {
    using Channel = typename Data::ChannelOf<Sample>::Type;
    const int kind = std::is_floating_point_v<Channel> ? 2 : std::is_signed_v<Channel> ? 1 : 0;
    return kind + (Data::SampleTraits<Sample>::isColor ? 3 : 0);
}

constexpr std::array<std::size_t, Data::ColorTypeEnum::Count> MakeShadeOrder() {
#define QUORVEX_RANK(value, name, sample) ShadeRank<sample>(),
    constexpr int ranks[] = {QUORVEX_SAMPLE_TYPES(QUORVEX_RANK)};
#undef QUORVEX_RANK
    std::array<std::size_t, Data::ColorTypeEnum::Count> order{};
    std::size_t slot = 0;
    for (int rank = 0; rank < 6; ++rank)
        for (std::size_t value = 0; value < order.size(); ++value)
            if (ranks[value] == rank)
                order[slot++] = value;
    return order;
}

} // namespace Internal

/// The ColorTypeEnum value of each operation in a shader's table, whose order differs from the enumeration's.
inline constexpr auto shadeOrder = Internal::MakeShadeOrder();

template <std::size_t slot>
using SampleInSlot = typename Internal::SampleOfValue<shadeOrder[slot]>::Type;

} // namespace Quorvex::Platform::Video::Software
