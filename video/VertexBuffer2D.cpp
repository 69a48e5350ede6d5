#include "video/VertexBuffer2D.h"

#include "video/Truncation.h"

namespace Quorvex::Platform::Video {

VertexRecord VertexBuffer2D::MakeRecord(float u, float v, float red, float green, float blue, float alpha,
                                        std::int32_t x, std::int32_t y, std::int32_t z) {
    const auto level = [](float channel) { return TruncateToLowByte(channel * 255.0); };
    return {u,
            v,
            level(red),
            level(green),
            level(blue),
            level(alpha),
            static_cast<float>(x),
            static_cast<float>(y),
            static_cast<float>(z)};
}

} // namespace Quorvex::Platform::Video
