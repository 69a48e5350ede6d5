#pragma once

#include "codecs/ImageInfo.h"
#include "data/ImageBase.h"

namespace ET::Img {

/// Raises Exception with empty text where the target is not the image that the headers asked for: the file may have
/// been replaced between the pass over the headers and this one.
void CheckTarget(const Quorvex::Data::ImageBase& target, const ImageInfo& info);

} // namespace ET::Img
