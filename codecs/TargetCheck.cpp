#include "codecs/TargetCheck.h"

#include "foundation/Exception.h"

namespace ET::Img {

void CheckTarget(const Quorvex::Data::ImageBase& target, const ImageInfo& info) {
    if (target.ColorType != info.ColorType || target.GetWidth() != info.Width || target.GetHeight() != info.Height ||
        target.AllocatedWidth < info.AllocatedWidth || target.AllocatedHeight < info.AllocatedHeight)
        throw Quorvex::Exception();
}

} // namespace ET::Img
