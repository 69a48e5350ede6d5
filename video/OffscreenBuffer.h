#pragma once

#include "video/Context.h"

namespace Quorvex::Platform::Video {

/// A target that is no window.
class OffscreenBuffer : public Context::ContextChild {
public:
    using ContextChild::ContextChild;

    /// 8-bit BGRA, top-down, rows GetWidth() pixels apart; valid as long as the buffer.
    virtual Data::ColorBGRA<std::uint8_t>* GetBits() = 0;
    virtual std::uint32_t GetWidth() const = 0;  ///< Pixels.
    virtual std::uint32_t GetHeight() const = 0; ///< Pixels.
};

} // namespace Quorvex::Platform::Video
