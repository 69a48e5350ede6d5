#pragma once

#include "video/software/PlainResampling.h"
#include "video/software/kernels/FilterRows.h"
#include "video/software/kernels/RowWorkers.h"

namespace Quorvex::Platform::Video::Software {

/// Gives the bytes of RenderPlain, faster: with positions and weights computed once per column and row, several pixels
/// at a time, and large pictures on several threads. Holds those threads. One thread uses the object.
class FastResampling {
public:
    FastResampling() = default;
    /// With the inner loops of a given instruction set, which the processor must have.
    explicit FastResampling(InstructionSet instructionSet) : instructions(instructionSet) {}

    /// As RenderPlain, which see.
    void Render(const PixelTarget& target, const Data::ImageBase& image, const ImageRect& rect,
                const PixelRegion& region);

    /// The threads, for other work on the rows of a picture while nothing is rendered.
    RowWorkers& GetWorkers() { return workers; }

private:
    template <class Sample>
    void RenderSamples(const PixelTarget& target, const ImageView<Sample>& image, const QuadSampling& sampling,
                       const ImageRect& rect, const PixelRegion& drawn);
    template <class Kernel>
    void RenderWith(Kernel& kernel, std::uint32_t workerCount);

    InstructionSet instructions = BestInstructionSet();
    RowWorkers workers;
};

} // namespace Quorvex::Platform::Video::Software
