#include "codecs/jpg/InverseDct.h"

#include <initializer_list>

namespace ET::Img::Jpg {

namespace InverseDctForms {

namespace {

// Cosines of k * pi / 16.
constexpr double cosine1 = 0.9807852804032304;
constexpr double cosine2 = 0.9238795325112867;
constexpr double cosine3 = 0.8314696123025452;
constexpr double cosine4 = 0.7071067811865476;
constexpr double cosine5 = 0.5555702330196022;
constexpr double cosine6 = 0.3826834323650898;
constexpr double cosine7 = 0.19509032201612828;

/// Eight values, STEP apart: twice the one-dimensional transform.
void Transform(double* values, std::size_t step) {
    const double x0 = values[0] * cosine4, x1 = values[step], x2 = values[2 * step], x3 = values[3 * step];
    const double x4 = values[4 * step] * cosine4, x5 = values[5 * step], x6 = values[6 * step], x7 = values[7 * step];
    const double even[4] = {
        x0 + x2 * cosine2 + x4 + x6 * cosine6,
        x0 + x2 * cosine6 - x4 - x6 * cosine2,
        x0 - x2 * cosine6 - x4 + x6 * cosine2,
        x0 - x2 * cosine2 + x4 - x6 * cosine6,
    };
    const double odd[4] = {
        x1 * cosine1 + x3 * cosine3 + x5 * cosine5 + x7 * cosine7,
        x1 * cosine3 - x3 * cosine7 - x5 * cosine1 - x7 * cosine5,
        x1 * cosine5 - x3 * cosine1 + x5 * cosine7 + x7 * cosine3,
        x1 * cosine7 - x3 * cosine5 + x5 * cosine3 - x7 * cosine1,
    };
    for (std::size_t i = 0; i < 4; ++i) {
        values[i * step] = even[i] + odd[i];
        values[(7 - i) * step] = even[i] - odd[i];
    }
}

std::int16_t Limited(double sample) {
    if (sample < -128.0)
        return -128;
    if (sample >= 127.0)
        return 127;
    return static_cast<std::int16_t>(sample);
}

void TransformBlock(std::int16_t* block) {
    double values[blockSize];
    for (std::size_t i = 0; i < blockSize; ++i)
        values[i] = block[i];
    for (std::size_t row = 0; row < 8; ++row)
        Transform(values + 8 * row, 1);
    for (std::size_t column = 0; column < 8; ++column)
        Transform(values + column, 8);
    for (std::size_t i = 0; i < blockSize; ++i)
        block[i] = Limited(values[i] * 0.25);
}

} // namespace

void Reference(std::int16_t* blocks, std::size_t count) {
    for (; count != 0; --count, blocks += blockSize)
        TransformBlock(blocks);
}

} // namespace InverseDctForms

InverseDct GetInverseDct() {
    static const InverseDct fastest = [] {
        for (const auto form : {InverseDctForms::Avx2(), InverseDctForms::Sse2()})
            if (form != nullptr)
                return form;
        return InverseDct(InverseDctForms::Reference);
    }();
    return fastest;
}

} // namespace ET::Img::Jpg
