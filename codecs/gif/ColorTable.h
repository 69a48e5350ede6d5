#pragma once

#include "data/ColorBGRA.h"
#include "data/StreamBuffer.h"

#include <array>

namespace ET::Img::Gif {

using Pixel = Quorvex::Data::ColorBGRA<std::uint8_t>;

/// The colours of a frame: the file's own, over whose first ones a frame may lay others. At most 256, all opaque.
class ColorTable {
public:
    /// The bits of a packed field that tell how many entries a table has, and whether there is one (GIF89a sections 18
    /// and 20).
    static constexpr std::uint8_t isThere = 0x80, sizeMask = 0x07;

    /// Reads as many entries as the packed field says over the first ones; those behind stay. Raises Exception with
    /// empty text where the file ends before.
    void ReadOver(Quorvex::StreamBuffer& file, std::uint8_t packed);

    std::uint32_t GetSize() const { return m_size; }
    /// Of any index; those that the table does not have are 0.
    const Pixel& operator[](std::uint8_t index) const { return m_colors[index]; }

private:
    std::array<Pixel, 256> m_colors{};
    std::uint32_t m_size = 0;
};

} // namespace ET::Img::Gif
