#include "tests/codecs/TifReference.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace TifReference {

namespace {

/// value x (2^channelBits - 1) / (2^bits - 1), rounded to nearest, by long division in the system of two.
std::uint64_t Scaled(std::uint64_t value, std::uint32_t bits, std::uint32_t channelBits) {
    if (bits == channelBits)
        return value;
    const std::uint64_t divisor = (std::uint64_t{1} << bits) - 1;
    std::uint64_t quotient = 0, rest = 0;
    const auto carry = [&] {
        if (rest >= divisor) {
            rest -= divisor;
            ++quotient;
        }
    };
    // The factor is as many ones: each adds the value to twice what was there.
    for (std::uint32_t i = 0; i < channelBits; ++i) {
        quotient *= 2;
        rest *= 2;
        carry();
        rest += value;
        carry();
    }
    return quotient + (2 * rest > divisor ? 1 : 0);
}

/// A sign, so many bits of exponent, and of significand, digit by digit.
double FloatOf(std::uint64_t bits, std::uint32_t exponentBits, std::uint32_t significandBits) {
    const int bias = (1 << (exponentBits - 1)) - 1;
    const auto exponent = static_cast<int>(bits >> significandBits & ((1u << exponentBits) - 1));
    const double fraction =
        std::ldexp(static_cast<double>(bits & ((1u << significandBits) - 1)), -static_cast<int>(significandBits));
    const double sign = bits >> (exponentBits + significandBits) & 1 ? -1 : 1;
    if (exponent == 0)
        return sign * std::ldexp(fraction, 1 - bias);
    if (exponent == (1 << exponentBits) - 1)
        return fraction == 0 ? sign * std::numeric_limits<double>::infinity() : std::nan("");
    return sign * std::ldexp(1 + fraction, exponent - bias);
}

/// The range of a byte for sums that count modulo 512: from 384 on they stand for numbers below 0.
std::uint8_t Ranged(double sum) {
    const int rounded = static_cast<int>(sum + 0.5);
    const int rest = (rounded % 512 + 512) % 512;
    return static_cast<std::uint8_t>(rest >= 384 ? 0 : std::min(rest, 255));
}

} // namespace

std::uint32_t ChannelBits(std::uint32_t bits, std::uint32_t format) {
    if (format == 3)
        return bits == 64 ? 64 : 32;
    return bits <= 8 ? 8 : bits <= 16 ? 16 : bits <= 32 ? 32 : 64;
}

std::uint64_t ChannelOf(std::uint64_t sample, std::uint32_t bits, std::uint32_t format) {
    if (format == 3)
        return bits >= 32 ? sample : std::bit_cast<std::uint32_t>(static_cast<float>(FloatOf(sample, bits)));
    const std::uint32_t channelBits = ChannelBits(bits, format);
    return format == 2 ? sample << (channelBits - bits) : Scaled(sample, bits, channelBits);
}

std::uint64_t FullOf(std::uint32_t bits, std::uint32_t format) {
    if (format == 3)
        return bits == 64 ? std::bit_cast<std::uint64_t>(1.0) : std::bit_cast<std::uint32_t>(1.0f);
    return ~std::uint64_t{0} >> (64 - ChannelBits(bits, format) + (format == 2 ? 1 : 0));
}

double FloatOf(std::uint64_t sample, std::uint32_t bits) {
    switch (bits) {
    case 16:
        return FloatOf(sample, 5, 10);
    case 24:
        return FloatOf(sample, 7, 16);
    case 32:
        return double(std::bit_cast<float>(static_cast<std::uint32_t>(sample)));
    default:
        return std::bit_cast<double>(sample);
    }
}

std::array<std::uint8_t, 4> OfYCbCr(int y, int cb, int cr) {
    return {Ranged(1.772 * (cb - 128) + y), Ranged(y - 0.344136 * (cb - 128) - 0.714136 * (cr - 128)),
            Ranged(1.402 * (cr - 128) + y), 255};
}

std::vector<std::uint64_t> ChannelsOf(const TifLoad& load) {
    std::size_t bytes = 0;
    Quorvex::Data::Dispatch(load.image->ColorType, "",
                            [&](auto tag) { bytes = sizeof(typename decltype(tag)::Channel); });
    const TifLoad::Bytes memory = load.Memory();
    std::vector<std::uint64_t> channels(memory.size() / bytes);
    for (std::size_t i = 0; i < memory.size(); ++i)
        channels[i / bytes] |= std::uint64_t{memory[i]} << 8 * (i % bytes);
    return channels;
}

} // namespace TifReference
