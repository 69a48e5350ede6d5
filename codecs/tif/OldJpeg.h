#pragma once

#include "codecs/tif/Layout.h"

#include <array>

namespace ET::Img::Tif {

/// Whether the bytes begin with the marker for the start of an image.
bool StartsJpeg(std::span<const std::uint8_t> bytes);

/// Whether the frame of a JPEG file is a lossless one.
bool IsLosslessJpeg(std::span<const std::uint8_t> file);

/// By component, the name of its table.
using ComponentTables = std::array<std::uint8_t, 4>;

/// What stands in the headers of a scan by component (ITU T.81, B.2.3 and table B.3).
struct ScanKind {
    ScanKind(const Directory& directory, const Layout& layout);
    bool isLossless;
    std::array<std::uint8_t, 4> first{};     ///< Of the coefficients; of lossless data, the predictor.
    std::array<std::uint8_t, 4> lowestBit{}; ///< The point transform.
};

/// The headers of JPEG data whose tables lie anywhere in a file, where tags name their places (TIFF 6.0, section 22).
class OldJpegHeaders {
public:
    /// Raises Exception without text where a table lies outside the file; tables that are missing are left out.
    OldJpegHeaders(const Directory& directory, const Layout& layout);

    /// A whole JPEG file around the data of a tile of that plane.
    std::vector<std::uint8_t> FileOf(std::span<const std::uint8_t> data, std::uint32_t width, std::uint32_t height,
                                     std::uint32_t plane) const;

private:
    std::vector<std::uint8_t> m_tables;
    ComponentTables m_quantisation, m_dc, m_ac;
    ScanKind m_scan;
    std::uint32_t m_samples;
    std::uint8_t m_factors; ///< Of the first component: horizontal, vertical.
};

/// The JPEG file of the whole image where the tag JPEGInterchangeFormat leads to one, or to its headers with the data
/// in the strips; nothing where it does not.
std::optional<std::vector<std::uint8_t>> ReadInterchangeFormat(const Directory& directory, const Layout& layout);

} // namespace ET::Img::Tif
