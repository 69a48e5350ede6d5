#include "video/software/kernels/FilterRows.h"

#if defined(__SSE2__)
#include "video/software/kernels/LanesSse2.inl"
#else
#include "video/software/kernels/LanesPlain.inl"
#endif

#define LANES_SET BaselineFilterRows
#include "video/software/kernels/FilterRows.inl"

namespace Quorvex::Platform::Video::Software {

InstructionSet BestInstructionSet() {
#if defined(__x86_64__)
    static const bool hasAvx2 = __builtin_cpu_supports("avx2") != 0;
    return hasAvx2 ? InstructionSet::Avx2 : InstructionSet::Baseline;
#else
    return InstructionSet::Baseline;
#endif
}

} // namespace Quorvex::Platform::Video::Software
