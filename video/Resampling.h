#pragma once

#include "foundation/Function.h"
#include "video/HardwareResampling.h"
#include "video/Image2DMeta.h"
#include "video/software/SoftwareResampling.h"

namespace Quorvex::Platform::Video {

/// Draws an image rectangle with one of the resampling modes, in the way of the renderer's backend: with a program of
/// the device on hardware, with a buffer of its own on Software. One object serves one view. Window thread only.
class Resampling {
public:
    using EnumResamplingMode = Video::EnumResamplingMode;

    /// Draws into the renderer, which must be its context's target, with the mode that the rectangle names. The
    /// context's blending decides whether the image's alpha counts. Raises what the shaders raise on hardware.
    void Draw(Renderer& renderer, Image2DMeta& image, const ImageRect& rect);
    /// Drops everything that belongs to a context; the next draw makes it again. Always true.
    bool DeleteContextObjects();

    EnumResamplingMode mode = EnumResamplingMode::Area; ///< The owner writes it and calls the notification.
    Function<Resampling&> modeChanged;

private:
    HardwareResampling hardware;
    Software::SoftwareResampling software;
};

} // namespace Quorvex::Platform::Video
