#include "codecs/bmp/WindowsHeaders.h"

#include "codecs/bmp/NormalHeader.h"

namespace ET::Img {

namespace {

// The magnitude also of the one value that has no positive counterpart in 32 bits.
std::uint32_t Magnitude(std::int32_t value) {
    return value < 0 ? 0u - static_cast<std::uint32_t>(value) : static_cast<std::uint32_t>(value);
}

void StoreImageSize(NormalHeader& normal) {
    normal.width = Magnitude(normal.fields.biWidth);
    normal.height = Magnitude(normal.fields.biHeight);
}

} // namespace

#define QUORVEX_COPY_FIELD(prefix, type, name, text) normal.fields.bi##name.Set(prefix##name);

void BITMAPINFOHEADER::CopyTo(NormalHeader& normal) const {
    QUORVEX_BITMAP_INFO_FIELDS(QUORVEX_COPY_FIELD, bi)
    StoreImageSize(normal);
}

void BITMAPV2INFOHEADER::CopyTo(NormalHeader& normal) const {
    BITMAPINFOHEADER::CopyTo(normal);
    QUORVEX_BITMAP_COLOR_MASK_FIELDS(QUORVEX_COPY_FIELD, bi)
}

void BITMAPV3INFOHEADER::CopyTo(NormalHeader& normal) const {
    BITMAPV2INFOHEADER::CopyTo(normal);
    QUORVEX_BITMAP_ALPHA_MASK_FIELD(QUORVEX_COPY_FIELD, bi)
}

void BITMAPV4HEADER::CopyTo(NormalHeader& normal) const {
    QUORVEX_BITMAP_NORMAL_FIELDS(QUORVEX_COPY_FIELD, bV4)
    StoreImageSize(normal);
}

void BITMAPV5HEADER::CopyTo(NormalHeader& normal) const {
    QUORVEX_BITMAP_NORMAL_FIELDS(QUORVEX_COPY_FIELD, bV5)
    StoreImageSize(normal);
}

#undef QUORVEX_COPY_FIELD

} // namespace ET::Img
