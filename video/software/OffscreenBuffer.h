#pragma once

#include "video/OffscreenBuffer.h"

namespace Quorvex::Platform::Video::Software {

/// Pixels in plain memory, all 0 at first.
class OffscreenBuffer final : public Video::OffscreenBuffer {
public:
    /// Raises as ImageBase::Allocate does.
    OffscreenBuffer(Context* owner, SharedPtr<Context> sharedContext, std::uint32_t width, std::uint32_t height);

    Data::ColorBGRA<std::uint8_t>* GetBits() override { return bits; }
    std::uint32_t GetWidth() const override { return image->GetWidth(); }
    std::uint32_t GetHeight() const override { return image->GetHeight(); }

private:
    SharedPtr<Data::ImageBase> image;
    Data::ColorBGRA<std::uint8_t>* bits;
};

} // namespace Quorvex::Platform::Video::Software
