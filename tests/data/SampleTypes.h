#pragma once

#include "data/Image.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace Quorvex::Data::Test {

using Quorvex::Test::RaisedText;

template <class, class... Samples>
struct Tail {
    using Types = ::testing::Types<Samples...>;
};

#define QUORVEX_WITH_COMMA(value, name, sample) , sample
/// All twenty, for typed tests.
using AllSamples = Tail<void QUORVEX_SAMPLE_TYPES(QUORVEX_WITH_COMMA)>::Types;
#undef QUORVEX_WITH_COMMA

/// Names a typed test after its sample type.
struct SampleNames {
    template <class Sample>
    static std::string GetName(int) {
        return SampleTraits<Sample>::typeName;
    }
};

/// The value in every channel, converted as C++ does.
template <class Sample>
Sample Uniform(std::int64_t value) {
    using Channel = typename ChannelOf<Sample>::Type;
    const auto channel = static_cast<Channel>(value);
    if constexpr (SampleTraits<Sample>::isColor)
        return {channel, channel, channel, channel};
    else
        return channel;
}

/// Writes another value into each pixel in memory, visible or not, and returns all of them row by row.
template <class Sample>
std::vector<Sample> FillWithPattern(Image<Sample>& image) {
    const Lock<Sample> pixels = SampleTraits<Sample>::LockIn(image, LockMode::ReadWrite);
    std::vector<Sample> pattern;
    for (std::uint32_t y = 0; y < pixels.AllocatedHeight; ++y)
        for (std::uint32_t x = 0; x < pixels.AllocatedWidth; ++x)
            pattern.push_back(pixels.Row(y)[x] = Uniform<Sample>(y * 31 + x * 7 + 1));
    return pattern;
}

template <class Sample>
std::vector<Sample> AllPixels(const Image<Sample>& image) {
    const Lock<const Sample> pixels = SampleTraits<Sample>::LockIn(image, LockMode::ReadOnly);
    const std::size_t count = std::size_t{pixels.AllocatedWidth} * pixels.AllocatedHeight;
    return count != 0 ? std::vector<Sample>(pixels.Data, pixels.Data + count) : std::vector<Sample>();
}

/// The place of the first difference as text, empty where all pixels agree.
template <class Sample>
std::string FirstDifference(const std::vector<Sample>& had, const std::vector<Sample>& wanted,
                            std::uint32_t rowLength) {
    if (had.size() != wanted.size())
        return std::to_string(had.size()) + " pixels instead of " + std::to_string(wanted.size());
    for (std::size_t i = 0; i < had.size(); ++i)
        if (std::memcmp(&had[i], &wanted[i], sizeof(Sample)) != 0)
            return "pixel (" + std::to_string(i % rowLength) + ", " + std::to_string(i / rowLength) + ")";
    return std::string();
}

/// An image of a type outside the list, as a plug-in might claim one.
class ForeignImage final : public ImageBase {
public:
    explicit ForeignImage(std::uint32_t type) : ImageBase(static_cast<ColorTypeEnum::Value>(type)) {}
    std::uint32_t GetWidth() const override { return 1; }
    std::uint32_t GetHeight() const override { return 1; }
    void* Allocate(std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) override { return nullptr; }
    bool DeleteContextObjects() override { return false; }
};

} // namespace Quorvex::Data::Test
