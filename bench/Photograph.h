#pragma once

#include <cmath>
#include <cstdint>
#include <random>

/// Value noise of several octaves, each twice as fine and half as strong.
class Photograph {
public:
    explicit Photograph(std::uint32_t seed) : random(seed) {
        for (float& value : lattice)
            value = static_cast<float>(random() % 2001) / 1000.0f - 1.0f;
    }

    float At(std::uint32_t x, std::uint32_t y) {
        float sum = 128.0f + static_cast<float>(random() % 5) - 2.0f;
        float strength = 60.0f;
        for (std::uint32_t shift = 9; shift > 1; --shift, strength *= 0.55f)
            sum += strength * Octave(x, y, shift);
        return sum;
    }

private:
    static constexpr std::uint32_t side = 64;

    float Octave(std::uint32_t x, std::uint32_t y, std::uint32_t shift) const {
        const std::uint32_t column = x >> shift, row = y >> shift;
        const float cell = static_cast<float>(1u << shift);
        const float u = static_cast<float>(x & ((1u << shift) - 1)) / cell;
        const float v = static_cast<float>(y & ((1u << shift) - 1)) / cell;
        const float top = std::lerp(Node(column, row), Node(column + 1, row), u);
        return std::lerp(top, std::lerp(Node(column, row + 1), Node(column + 1, row + 1), u), v);
    }
    float Node(std::uint32_t column, std::uint32_t row) const {
        return lattice[(row * 37 + column * 11 + column * row) % (side * side)];
    }

    std::mt19937 random;
    float lattice[side * side];
};
