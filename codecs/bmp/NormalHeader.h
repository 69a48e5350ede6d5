#pragma once

#include "codecs/ImageInfo.h"
#include "codecs/bmp/WindowsHeaders.h"
#include "data/Stream.h"

namespace ET::Img {

/// The headers of any generation in one form; all steps behind the headers read this copy alone. A field that the file
/// does not have is 0.
struct NormalHeader {
    NormalHeader();

    ImageInfo GetImageInfo() const;

    BITMAPV3INFOHEADER fields;
    std::uint32_t width = 0;  ///< Pixels, a magnitude.
    std::uint32_t height = 0; ///< Pixels, a magnitude. The sign of fields.biHeight tells the order of the rows.
    /// Bytes from the start of the info header to the palette: its own size and the masks that follow it.
    std::uint32_t headerBytes = 0;
    /// Bytes from the start of the file to the pixels; 0 without a file header.
    std::uint32_t offBits = 0;
};

/// Reads all headers from the start of the stream into the normal form and nests each of them in the root. Leaves the
/// stream behind them, at the palette. Raises Exception with empty text for a header of no known size and where the
/// stream ends too early.
void ReadHeaders(Quorvex::Stream& stream, Quorvex::CompositeOfProperties& root, NormalHeader& normal);

} // namespace ET::Img
