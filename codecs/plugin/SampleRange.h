#pragma once

#include "data/ImageBase.h"

#include <optional>

namespace ET::Img::Plugin {

struct SampleRange {
    double minimum;
    double maximum;
};

/// The smallest and the largest sample of all channels of the visible pixels, not counting what is no number. Nothing
/// where there is none. Raises Exception "unknown color type".
std::optional<SampleRange> FindSampleRange(const Quorvex::Data::ImageBase& image);

} // namespace ET::Img::Plugin
