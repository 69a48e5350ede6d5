#pragma once

#include "video/OffscreenBuffer.h"
#include "video/Renderer.h"
#include "video/software/FastResampling.h"

namespace Quorvex::Platform::Video::Software {

/// Resampling for windows without a device: keeps the image as it was resampled for the window, moves it along while
/// the view scrolls, and computes only what came into view. Window thread only.
class SoftwareResampling {
public:
    /// Draws the image into the renderer's colour buffer. A buffer that is not aligned to its pixels is reported
    /// ("pBits%4!=0", "Pitch%4!=0", with 2 for 16-bit buffers) and raises Exception with that text; nothing is drawn
    /// into a buffer of an unknown format.
    void Draw(Renderer& renderer, const SharedPtr<Data::ImageBase>& image, const ImageRect& rect);
    /// The part of Draw behind the window: makes the kept picture, WIDTH x HEIGHT pixels, show the image.
    void UpdateScaledBuffer(const Data::ImageBase& image, const ImageRect& rect, std::uint32_t width,
                            std::uint32_t height);
    void DeleteContextObjects() { scaledBuffer.reset(); }

private:
    bool IsScroll(const ImageRect& rect) const;
    void Scroll(const PixelTarget& target, const Data::ImageBase& image, const ImageRect& rect);

    ImageRect cachedRect; ///< What scaledBuffer shows.
    SharedPtr<OffscreenBuffer> scaledBuffer;
    FastResampling resampling;
};

} // namespace Quorvex::Platform::Video::Software
