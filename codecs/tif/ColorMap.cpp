#include "codecs/tif/ColorMap.h"

#include "codecs/tif/Tags.h"
#include "foundation/Exception.h"

#include <algorithm>

namespace ET::Img::Tif {

namespace {

/// By how much the numbers of the map go down to 8 bits: writers put a byte into both halves of a number, as the
/// standard has it, or in the upper one alone, or took the range for 0 to 255. Nothing where some number needs its 16
/// bits.
std::optional<std::uint32_t> ShiftToBytes(const std::vector<std::uint32_t>& numbers) {
    const auto are = [&](auto condition) { return std::all_of(numbers.begin(), numbers.end(), condition); };
    if (are([](std::uint32_t number) { return number < 256; }))
        return 0;
    if (are([](std::uint32_t number) { return number >> 8 == (number & 255); }) ||
        are([](std::uint32_t number) { return (number & 255) == 0; }))
        return 8;
    return std::nullopt;
}

} // namespace

ColorMap ReadColorMap(const Directory& directory, std::uint32_t bits) {
    const std::size_t count = std::size_t{1} << bits;
    std::vector<std::uint32_t> numbers = directory.Integers(Tag::ColorMap);
    if (numbers.size() < 3 * count)
        throw Quorvex::Exception();
    numbers.resize(3 * count);
    const std::optional<std::uint32_t> shift = ShiftToBytes(numbers);
    ColorMap map;
    map.channelBits = shift ? 8 : 16;
    const auto at = [&](std::size_t place) { return static_cast<std::uint16_t>(numbers[place] >> shift.value_or(0)); };
    const auto opaque = static_cast<std::uint16_t>(shift ? 0xFF : 0xFFFF);
    for (std::size_t i = 0; i < count; ++i)
        map.colors.push_back({at(2 * count + i), at(count + i), at(i), opaque});
    return map;
}

} // namespace ET::Img::Tif
