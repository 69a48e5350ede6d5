#pragma once

#include "video/RendererTypeEnum.h"

#include <span>

namespace Quorvex::Platform::Video {

/// Layouts of a window surface's pixels; bufferFormatLayouts tells their bits. Higher values name the same layouts in
/// another order of channels and matter to the matching of OpenGL pixel formats alone.
enum class BufferFormat : std::uint32_t { BGRA32 = 0, BGRX32 = 1, BGR24 = 2, BGR565 = 3 };

struct ChannelLayout {
    std::uint32_t bits;  ///< 0: the channel is missing.
    std::uint32_t shift; ///< Of the lowest bit within the pixel.
};

struct BufferFormatLayout {
    std::uint32_t totalBits;
    ChannelLayout red;
    ChannelLayout green;
    ChannelLayout blue;
    ChannelLayout alpha;
};

/// Indexed by BufferFormat.
inline constexpr BufferFormatLayout bufferFormatLayouts[] = {
    {32, {8, 16}, {8, 8}, {8, 0}, {8, 24}},
    {32, {8, 16}, {8, 8}, {8, 0}, {0, 0}},
    {24, {8, 16}, {8, 8}, {8, 0}, {0, 0}},
    {16, {5, 11}, {6, 5}, {5, 0}, {0, 0}},
};

/// What a window surface can have, as the backend found out.
class BufferFormats {
public:
    virtual ~BufferFormats() = default;
    virtual bool IsSupported(BufferFormat format) const = 0;
};

/// The first wanted format that is supported; WANTED stands in order of preference. None raises Exception
/// "No OpenGL buffer format!" with the backend's name, after a report of it.
BufferFormat ChooseBufferFormat(std::span<const BufferFormat> wanted, const BufferFormats& formats,
                                RendererTypeEnum backend);

} // namespace Quorvex::Platform::Video
