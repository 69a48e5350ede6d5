#pragma once

namespace Quorvex::Data {

/// Four channels in memory order blue, green, red, alpha, without padding: a row of 8-bit pixels is byte-compatible
/// with a 32-bit BGRA surface. Colour is straight, never multiplied by alpha, unless a user of the type says otherwise.
template <class T>
struct ColorBGRA {
    using Channel = T;

    T blue{};
    T green{};
    T red{};
    T alpha{};

    friend constexpr bool operator==(const ColorBGRA&, const ColorBGRA&) = default;
};

static_assert(sizeof(ColorBGRA<char>) == 4 && sizeof(ColorBGRA<double>) == 4 * sizeof(double));

} // namespace Quorvex::Data
