#pragma once

#include "video/WindowSurface.h"

#include <vector>

namespace Quorvex::Platform::Video {

/// A window in memory that keeps what it was told to show.
class RecordingWindow final : public IWindowSurface {
public:
    struct Frame {
        bool hasAlpha;
        std::uint32_t width;
        std::uint32_t height;
        std::uint32_t pitchBytes;
        std::vector<std::uint8_t> bytes;
        bool operator==(const Frame&) const = default;
    };

    void* GetNativeHandle() const override { return nullptr; }
    bool IsLayered() const override { return isLayered; }
    void ShowOpaque(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                    std::uint32_t pitchBytes) override {
        Keep(false, bits, width, height, pitchBytes);
    }
    void ShowWithAlpha(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                       std::uint32_t pitchBytes) override {
        Keep(true, bits, width, height, pitchBytes);
    }
    void DispatchMouseMessagesAndHide() override {
        ++hideCount;
        if (raisesOnHide)
            throw 1;
    }
    bool IsCompositionEnabled() const override { return isComposed; }

    std::vector<Frame> frames;
    int hideCount = 0;
    bool isLayered = false;
    bool isComposed = false;
    bool raisesOnHide = false;

private:
    void Keep(bool hasAlpha, const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
              std::uint32_t pitchBytes) {
        const std::size_t size = static_cast<std::size_t>(pitchBytes) * height;
        frames.push_back({hasAlpha, width, height, pitchBytes, std::vector<std::uint8_t>(bits, bits + size)});
    }
};

} // namespace Quorvex::Platform::Video
