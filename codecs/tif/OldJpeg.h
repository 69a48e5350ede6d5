#pragma once

#include "codecs/tif/Layout.h"

#include <array>

namespace ET::Img::Tif {

/// Whether the bytes begin with the marker for the start of an image.
bool StartsJpeg(std::span<const std::uint8_t> bytes);

/// The headers of JPEG data whose tables lie anywhere in a file, where tags name their places (TIFF 6.0, section 22).
class OldJpegHeaders {
public:
    /// Raises Exception without text where a table lies outside the file; tables that are missing are left out.
    OldJpegHeaders(const Directory& directory, const Layout& layout);

    /// A whole JPEG file around the data of a tile.
    std::vector<std::uint8_t> FileOf(std::span<const std::uint8_t> data, std::uint32_t width,
                                     std::uint32_t height) const;

private:
    std::vector<std::uint8_t> m_tables;
    std::uint32_t m_samples;
    std::uint8_t m_factors; ///< Of the first component: horizontal, vertical.
};

/// The JPEG file of the whole image where the tag JPEGInterchangeFormat leads to one, or to its headers with the data
/// in the strips; nothing where it does not.
std::optional<std::vector<std::uint8_t>> ReadInterchangeFormat(const Directory& directory);

} // namespace ET::Img::Tif
