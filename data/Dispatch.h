#pragma once

#include "data/ImageBase.h"
#include "foundation/Exception.h"

namespace Quorvex::Data {

/// What is known of a sample type while compiling.
template <class T>
struct SampleTraits;

#define QUORVEX_TRAITS(value, name, sample)                                                                            \
    template <>                                                                                                        \
    struct SampleTraits<sample> {                                                                                      \
        static constexpr ColorTypeEnum::Value type = ColorTypeEnum::name;                                              \
        static constexpr const char* typeName = #name;                                                                 \
        static constexpr bool isColor = value >= 10;                                                                   \
        static Lock<const sample> LockIn(const ImageBase& image, LockMode mode) { return image.Lock##name(mode); }     \
        static Lock<sample> LockIn(ImageBase& image, LockMode mode) { return image.Lock##name(mode); }                 \
    };
QUORVEX_SAMPLE_TYPES(QUORVEX_TRAITS)
#undef QUORVEX_TRAITS

/// The arithmetic type of one channel: the sample itself for grey.
template <class T>
struct ChannelOf {
    using Type = T;
};
template <class T>
struct ChannelOf<ColorBGRA<T>> {
    using Type = T;
};

/// Carries a sample type into a generic lambda: [](auto tag) { using Sample = typename decltype(tag)::Sample; ... }
template <class T>
struct SampleTag {
    using Sample = T;
    using Channel = typename ChannelOf<T>::Type;
    using Traits = SampleTraits<T>;
};

/// The one dispatch over sample types. A value outside the list raises Exception with the caller's text.
template <class Action>
decltype(auto) Dispatch(ColorTypeEnum::Value type, TextView failure, Action&& action) {
    switch (type) {
#define QUORVEX_CASE(value, name, sample)                                                                              \
    case ColorTypeEnum::name:                                                                                          \
        return action(SampleTag<sample>());
        QUORVEX_SAMPLE_TYPES(QUORVEX_CASE)
#undef QUORVEX_CASE
    }
    throw Exception(failure);
}

} // namespace Quorvex::Data
