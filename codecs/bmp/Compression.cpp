#include "codecs/bmp/Compression.h"

#include "codecs/bmp/NormalHeader.h"

namespace ET::Img {

void CheckCompression(const NormalHeader& header) {
    const std::uint32_t compression = header.fields.biCompression;
    if (compression == Compression::BitFields && header.fields.biBitCount == 1)
        throw Quorvex::Exception("BCA_HUFFMAN1D is not supported");
    if (compression == Compression::JpegOrRunLength24)
        throw Quorvex::Exception("BI_JPEG or BCA_RLE24 is not supported");
    if (compression == Compression::Png)
        throw Quorvex::Exception("BI_PNG is not supported");
    if (compression > Compression::AlphaBitFields)
        throw Quorvex::Exception("invalid compression");
}

} // namespace ET::Img
