#include "video/software/FastResampling.h"

#include "video/software/kernels/FilterKernel.h"
#include "video/software/kernels/NearestKernel.h"

namespace Quorvex::Platform::Video::Software {

namespace {

/// Below this many pixels to read and to write, a second thread starts too late to help.
constexpr double pixelsWorthAThread = 65536.0;

double PixelsToTouch(const QuadSampling& sampling, const PixelRegion& drawn, EnumResamplingMode mode) {
    const double written = double(drawn.right - drawn.left) * (drawn.bottom - drawn.top);
    const AreaFootprint& footprint = sampling.Footprint();
    return mode == EnumResamplingMode::Area ? written * (1.0 + footprint.sizeX * footprint.sizeY) : written;
}

} // namespace

void FastResampling::Render(const PixelTarget& target, const Data::ImageBase& image, const ImageRect& rect,
                            const PixelRegion& region) {
    Data::Dispatch(image.ColorType, "unknown color type", [&](auto tag) {
        using Tag = decltype(tag);
        // One lock for all workers: its counters are plain.
        const auto pixels = Tag::Traits::LockIn(image, Data::LockMode::ReadOnly);
        if (pixels.Data == nullptr || pixels.Width == 0 || pixels.Height == 0)
            throw Exception();
        const QuadSampling sampling(rect, image);
        const PixelRegion drawn = Intersection(Intersection(Normalized(rect), region), target.Whole());
        if (sampling.IsEmpty() || drawn.IsEmpty())
            return;
        const ImageView<typename Tag::Sample> view{pixels.Data, pixels.AllocatedWidth, pixels.Width, pixels.Height};
        RenderSamples(target, view, sampling, rect, drawn);
    });
}

template <class Sample>
void FastResampling::RenderSamples(const PixelTarget& target, const ImageView<Sample>& image,
                                   const QuadSampling& sampling, const ImageRect& rect, const PixelRegion& drawn) {
    const ResamplingJob<Sample> job{target, image, sampling, rect.mode, Normalized(rect), drawn};
    const bool isWorthThreads = PixelsToTouch(sampling, drawn, rect.mode) >= pixelsWorthAThread;
    const std::uint32_t workerCount = isWorthThreads ? workers.LargestCount() : 1;
    if (rect.mode == EnumResamplingMode::Nearest) {
        NearestKernel<Sample> kernel(job);
        RenderWith(kernel, workerCount);
    } else {
        FilterKernel<Sample> kernel(job, instructions, workerCount);
        RenderWith(kernel, workerCount);
    }
}

template <class Kernel>
void FastResampling::RenderWith(Kernel& kernel, std::uint32_t workerCount) {
    workers.Run(kernel.UnitCount(), workerCount,
                [&kernel](std::uint32_t worker, std::uint32_t unit) { kernel.RenderUnit(worker, unit); });
}

} // namespace Quorvex::Platform::Video::Software
