#pragma once

#include "video/Context.h"

#include <new>

namespace Quorvex::Platform::Video {

/// A texture on the device. Image2DMeta owns it together with the image that it shows. Window thread only.
class Image2D : public Context::ContextChild {
public:
    Image2D(Context* owner, SharedPtr<Context> sharedContext, Function<void> uploadAgain);

    void OnDeviceLost() override {}
    /// Repeats the upload.
    void OnDeviceReset() override;

    /// Uploads the meta's source. Raises the two-language text where the image is too large for the device (see
    /// CheckTextureUpload), OutOfDeviceMemory where device memory runs out.
    virtual void CreateFromMemory(const Image2DMeta& image) = 0;
    /// The device's filter, for making larger and smaller alike.
    virtual void SetFilterLinear() = 0;
    virtual void SetFilterNearest() = 0;

    /// Replaces the call that repeats the upload: its owner has moved, or has gone.
    void SetRepeatUpload(Function<void> uploadAgain) { repeatUpload = uploadAgain; }

private:
    Function<void> repeatUpload;
};

/// The device's memory ran out; reads as "bad allocation".
class OutOfDeviceMemory final : public std::bad_alloc {
public:
    const char* what() const noexcept override { return "bad allocation"; }
};

/// For backends whose device limits a texture: raises Exception "The image resolution is not supported by your graphics
/// card." (in two languages) if the allocated width or height is above the largest side, in pixels, and Exception
/// "invalid color type" for a sample type outside the list.
void CheckTextureUpload(const Data::ImageBase& image, std::uint32_t largestSide);

} // namespace Quorvex::Platform::Video
