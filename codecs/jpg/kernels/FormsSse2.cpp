#if defined(__x86_64__) || defined(__i386__)

#include "codecs/jpg/kernels/WordLanesSse2.inl"

#include "codecs/jpg/kernels/ColorRoutes.inl"
#include "codecs/jpg/kernels/InverseDct.inl"

#else

#include "codecs/jpg/ColorConversion.h"

namespace ET::Img::Jpg {

InverseDct InverseDctForms::Sse2() {
    return nullptr;
}
const ColorRoutes* ColorForms::Sse2() {
    return nullptr;
}

} // namespace ET::Img::Jpg

#endif
