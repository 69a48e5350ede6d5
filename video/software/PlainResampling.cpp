#include "video/software/PlainResampling.h"

namespace Quorvex::Platform::Video::Software {

PixelRegion PixelTarget::Whole() const {
    return {0, 0, TruncateToInt32(width), TruncateToInt32(height)};
}

void RenderPlain(const PixelTarget& target, const Data::ImageBase& image, const ImageRect& rect,
                 const PixelRegion& region) {
    Data::Dispatch(image.ColorType, "unknown color type", [&](auto tag) {
        using Tag = decltype(tag);
        const auto pixels = Tag::Traits::LockIn(image, Data::LockMode::ReadOnly);
        if (pixels.Data == nullptr || pixels.Width == 0 || pixels.Height == 0)
            throw Exception();
        const QuadSampling sampling(rect, image);
        if (sampling.IsEmpty())
            return;
        const ImageView<typename Tag::Sample> view{pixels.Data, pixels.AllocatedWidth, pixels.Width, pixels.Height};
        const PixelRegion origin = Normalized(rect);
        const PixelRegion drawn = Intersection(Intersection(origin, region), target.Whole());
        for (std::int32_t y = drawn.top; y < drawn.bottom; ++y) {
            QuadSampling::Row row(sampling, y - origin.top);
            for (std::int32_t x = drawn.left; x < drawn.right; ++x)
                *target.At(x, y) = ShadePlain(rect.mode, row.At(x - origin.left), view, sampling.Footprint());
        }
    });
}

} // namespace Quorvex::Platform::Video::Software
