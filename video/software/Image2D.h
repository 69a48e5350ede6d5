#pragma once

#include "video/Image2D.h"

namespace Quorvex::Platform::Video::Software {

/// The source image itself: nothing is uploaded, and nothing can be lost.
class Image2D final : public Video::Image2D {
public:
    using Video::Image2D::Image2D;
    /// Unbinds itself.
    ~Image2D() override;

    void OnDeviceReset() override {}
    void CreateFromMemory(const Image2DMeta& image) override;
    // The pixel program filters.
    void SetFilterLinear() override {}
    void SetFilterNearest() override {}

    const SharedPtr<Data::ImageBase>& GetSource() const { return source; }

private:
    SharedPtr<Data::ImageBase> source;
};

} // namespace Quorvex::Platform::Video::Software
