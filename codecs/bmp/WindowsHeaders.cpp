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

void BITMAPINFOHEADER::CopyTo(NormalHeader& normal) const {
    normal.fields.biSize.Set(biSize);
    normal.fields.biWidth.Set(biWidth);
    normal.fields.biHeight.Set(biHeight);
    normal.fields.biPlanes.Set(biPlanes);
    normal.fields.biBitCount.Set(biBitCount);
    normal.fields.biCompression.Set(biCompression);
    normal.fields.biSizeImage.Set(biSizeImage);
    normal.fields.biXPelsPerMeter.Set(biXPelsPerMeter);
    normal.fields.biYPelsPerMeter.Set(biYPelsPerMeter);
    normal.fields.biClrUsed.Set(biClrUsed);
    normal.fields.biClrImportant.Set(biClrImportant);
    StoreImageSize(normal);
}

void BITMAPV2INFOHEADER::CopyTo(NormalHeader& normal) const {
    BITMAPINFOHEADER::CopyTo(normal);
    normal.fields.biRedMask.Set(biRedMask);
    normal.fields.biGreenMask.Set(biGreenMask);
    normal.fields.biBlueMask.Set(biBlueMask);
}

void BITMAPV3INFOHEADER::CopyTo(NormalHeader& normal) const {
    BITMAPV2INFOHEADER::CopyTo(normal);
    normal.fields.biAlphaMask.Set(biAlphaMask);
}

void BITMAPV4HEADER::CopyTo(NormalHeader& normal) const {
    normal.fields.biSize.Set(bV4Size);
    normal.fields.biWidth.Set(bV4Width);
    normal.fields.biHeight.Set(bV4Height);
    normal.fields.biPlanes.Set(bV4Planes);
    normal.fields.biBitCount.Set(bV4BitCount);
    normal.fields.biCompression.Set(bV4Compression);
    normal.fields.biSizeImage.Set(bV4SizeImage);
    normal.fields.biXPelsPerMeter.Set(bV4XPelsPerMeter);
    normal.fields.biYPelsPerMeter.Set(bV4YPelsPerMeter);
    normal.fields.biClrUsed.Set(bV4ClrUsed);
    normal.fields.biClrImportant.Set(bV4ClrImportant);
    normal.fields.biRedMask.Set(bV4RedMask);
    normal.fields.biGreenMask.Set(bV4GreenMask);
    normal.fields.biBlueMask.Set(bV4BlueMask);
    normal.fields.biAlphaMask.Set(bV4AlphaMask);
    StoreImageSize(normal);
}

void BITMAPV5HEADER::CopyTo(NormalHeader& normal) const {
    normal.fields.biSize.Set(bV5Size);
    normal.fields.biWidth.Set(bV5Width);
    normal.fields.biHeight.Set(bV5Height);
    normal.fields.biPlanes.Set(bV5Planes);
    normal.fields.biBitCount.Set(bV5BitCount);
    normal.fields.biCompression.Set(bV5Compression);
    normal.fields.biSizeImage.Set(bV5SizeImage);
    normal.fields.biXPelsPerMeter.Set(bV5XPelsPerMeter);
    normal.fields.biYPelsPerMeter.Set(bV5YPelsPerMeter);
    normal.fields.biClrUsed.Set(bV5ClrUsed);
    normal.fields.biClrImportant.Set(bV5ClrImportant);
    normal.fields.biRedMask.Set(bV5RedMask);
    normal.fields.biGreenMask.Set(bV5GreenMask);
    normal.fields.biBlueMask.Set(bV5BlueMask);
    normal.fields.biAlphaMask.Set(bV5AlphaMask);
    StoreImageSize(normal);
}

} // namespace ET::Img
