// Four 64-bit floats at once for processors that nothing is known about. Included by a source file of its own.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#define LANES_TARGET
#define LANES_FUNCTION inline

namespace Quorvex::Platform::Video::Software {
namespace {

struct Lanes {
    double values[4];
};
struct IntLanes {
    std::int32_t values[4];
};
struct WideLanes {
    Lanes low;
    Lanes high;
};

template <class Operation>
Lanes ForEachLane(const Operation& operation) {
    return {{operation(0), operation(1), operation(2), operation(3)}};
}
inline Lanes Load(const double* values) {
    return {{values[0], values[1], values[2], values[3]}};
}
inline void Store(double* values, const Lanes& lanes) {
    std::memcpy(values, lanes.values, sizeof(lanes.values));
}
inline Lanes Broadcast(double value) {
    return {{value, value, value, value}};
}
inline Lanes Add(const Lanes& a, const Lanes& b) {
    return ForEachLane([&](int i) { return a.values[i] + b.values[i]; });
}
inline Lanes Subtract(const Lanes& a, const Lanes& b) {
    return ForEachLane([&](int i) { return a.values[i] - b.values[i]; });
}
inline Lanes Multiply(const Lanes& a, const Lanes& b) {
    return ForEachLane([&](int i) { return a.values[i] * b.values[i]; });
}
inline Lanes Minimum(const Lanes& a, const Lanes& b) {
    return ForEachLane([&](int i) { return a.values[i] < b.values[i] ? a.values[i] : b.values[i]; });
}
inline Lanes Maximum(const Lanes& a, const Lanes& b) {
    return ForEachLane([&](int i) { return a.values[i] > b.values[i] ? a.values[i] : b.values[i]; });
}
inline Lanes Magnitude(const Lanes& a) {
    return ForEachLane([&](int i) { return std::abs(a.values[i]); });
}
inline bool IsAnyAbove(const Lanes& a, const Lanes& limit) {
    return a.values[0] > limit.values[0] || a.values[1] > limit.values[1] || a.values[2] > limit.values[2] ||
           a.values[3] > limit.values[3];
}

struct RoundedLanes {
    IntLanes integers;
    Lanes values;
};

/// For magnitudes below 2^31; larger ones stay there.
inline RoundedLanes RoundToNearest(const Lanes& a) {
    RoundedLanes result;
    for (int i = 0; i < 4; ++i) {
        const double value = std::clamp(std::nearbyint(a.values[i]), -0x1p31, 0x1p31 - 1.0);
        result.integers.values[i] = static_cast<std::int32_t>(value);
        result.values.values[i] = value;
    }
    return result;
}
template <class Channel>
WideLanes Widen(const Channel* channels) {
    return {ForEachLane([&](int i) { return static_cast<double>(channels[i]); }),
            ForEachLane([&](int i) { return static_cast<double>(channels[i + 4]); })};
}
inline IntLanes LowBytes(IntLanes a) {
    for (std::int32_t& value : a.values)
        value &= 0xFF;
    return a;
}
inline void StoreColors(Color* pixels, const IntLanes& a, const IntLanes& b, const IntLanes& c, const IntLanes& d) {
    for (const IntLanes* lanes : {&a, &b, &c, &d})
        *pixels++ = {static_cast<std::uint8_t>(lanes->values[0]), static_cast<std::uint8_t>(lanes->values[1]),
                     static_cast<std::uint8_t>(lanes->values[2]), static_cast<std::uint8_t>(lanes->values[3])};
}
inline void StoreGreys(Color* pixels, const IntLanes& a) {
    for (const std::int32_t value : a.values) {
        const auto grey = static_cast<std::uint8_t>(value);
        *pixels++ = {grey, grey, grey, 255};
    }
}

} // namespace
} // namespace Quorvex::Platform::Video::Software
