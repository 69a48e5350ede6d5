#include "codecs/tif/SampleFinish.h"

namespace ET::Img::Tif {

namespace {

/// A binary number with a sign, so many bits of exponent and of significand, in the format of 32 bits.
template <std::uint32_t exponentBits, std::uint32_t significandBits>
float Widen(std::uint32_t number) {
    constexpr std::uint32_t bias = (1u << (exponentBits - 1)) - 1, largestExponent = (1u << exponentBits) - 1;
    const std::uint32_t sign = (number >> (exponentBits + significandBits) & 1) << 31;
    const std::uint32_t exponent = number >> significandBits & largestExponent;
    const std::uint32_t significand = (number & ((1u << significandBits) - 1)) << (23 - significandBits);
    if (exponent == 0) {
        // Without the leading one: its value is a whole multiple of the smallest number.
        const float magnitude =
            std::bit_cast<float>((128 - bias) << 23 | significand) - std::bit_cast<float>((128 - bias) << 23);
        return std::bit_cast<float>(std::bit_cast<std::uint32_t>(magnitude) | sign);
    }
    const std::uint32_t widened = exponent == largestExponent ? 255 : exponent + 127 - bias;
    return std::bit_cast<float>(sign | widened << 23 | significand);
}

} // namespace

float FloatOfHalf(std::uint32_t half) {
    return Widen<5, 10>(half);
}

float FloatOf24Bits(std::uint32_t number) {
    return Widen<7, 16>(number);
}

} // namespace ET::Img::Tif
