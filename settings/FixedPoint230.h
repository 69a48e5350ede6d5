#pragma once

#include <cstdint>

namespace Quorvex {

/// A number with 2 bits before and 30 bits behind the binary point, as the endpoints of colour spaces are stored in
/// bitmap headers: -2 up to 2, in steps of 2^-30. Every value is exact as a 64-bit float.
struct FixedPoint230 {
    static constexpr double one = 1073741824.0;

    std::int32_t raw = 0;

    constexpr double ToDouble() const { return raw / one; }
    friend constexpr bool operator==(const FixedPoint230&, const FixedPoint230&) = default;
};

} // namespace Quorvex
