#pragma once

#include "codecs/bmp/HeaderTexts.h"
#include "codecs/bmp/InfoHeader.h"

namespace ET::Img {

/// A field of a Windows header, with its explanation for the tree of fields.
template <class T>
using HeaderField = Quorvex::UninitializedPropertyWithDescription<T>;

/// The header of Windows 3, 40 bytes; the later ones of 52 and 56 bytes append the masks to it.
class BITMAPINFOHEADER : public InfoHeader {
public:
    BITMAPINFOHEADER() : BITMAPINFOHEADER("BITMAPINFOHEADER", HeaderTexts::infoHeader) {}
    void StoreSize(std::uint32_t sizeBytes) override { biSize.Set(sizeBytes); }
    void CopyTo(NormalHeader& normal) const override;

    HeaderField<std::uint32_t> biSize{"biSize", this, HeaderTexts::size};
    HeaderField<std::int32_t> biWidth{"biWidth", this, HeaderTexts::width};
    HeaderField<std::int32_t> biHeight{"biHeight", this, HeaderTexts::height};
    HeaderField<std::uint16_t> biPlanes{"biPlanes", this, HeaderTexts::planes};
    HeaderField<std::uint16_t> biBitCount{"biBitCount", this, HeaderTexts::bitCount};
    HeaderField<std::uint32_t> biCompression{"biCompression", this, HeaderTexts::compression};
    HeaderField<std::uint32_t> biSizeImage{"biSizeImage", this, HeaderTexts::sizeImage};
    HeaderField<std::int32_t> biXPelsPerMeter{"biXPelsPerMeter", this, HeaderTexts::xPelsPerMeter};
    HeaderField<std::int32_t> biYPelsPerMeter{"biYPelsPerMeter", this, HeaderTexts::yPelsPerMeter};
    HeaderField<std::uint32_t> biClrUsed{"biClrUsed", this, HeaderTexts::clrUsed};
    HeaderField<std::uint32_t> biClrImportant{"biClrImportant", this, HeaderTexts::clrImportant};

protected:
    BITMAPINFOHEADER(const char* name, const char* description) : InfoHeader(name, description) {}
};

class BITMAPV2INFOHEADER : public BITMAPINFOHEADER {
public:
    BITMAPV2INFOHEADER() : BITMAPV2INFOHEADER("BITMAPV2INFOHEADER", HeaderTexts::v2Header) {}
    void CopyTo(NormalHeader& normal) const override;

    HeaderField<std::uint32_t> biRedMask{"biRedMask", this, HeaderTexts::redMask};
    HeaderField<std::uint32_t> biGreenMask{"biGreenMask", this, HeaderTexts::greenMask};
    HeaderField<std::uint32_t> biBlueMask{"biBlueMask", this, HeaderTexts::blueMask};

protected:
    BITMAPV2INFOHEADER(const char* name, const char* description) : BITMAPINFOHEADER(name, description) {}
};

class BITMAPV3INFOHEADER final : public BITMAPV2INFOHEADER {
public:
    BITMAPV3INFOHEADER() : BITMAPV2INFOHEADER("BITMAPV3INFOHEADER", HeaderTexts::v3Header) {}
    void CopyTo(NormalHeader& normal) const override;

    HeaderField<std::uint32_t> biAlphaMask{"biAlphaMask", this, HeaderTexts::alphaMask};
};

/// A colour by its CIE coordinates.
class CIEXYZ final : public Quorvex::CompositeOfProperties {
public:
    CIEXYZ(const char* name, CompositeOfProperties* owner, const char* description)
        : CompositeOfProperties(name, owner, description) {}

    HeaderField<Quorvex::FixedPoint230> ciexyzX{"ciexyzX", this, HeaderTexts::xCoordinate};
    HeaderField<Quorvex::FixedPoint230> ciexyzY{"ciexyzY", this, HeaderTexts::yCoordinate};
    HeaderField<Quorvex::FixedPoint230> ciexyzZ{"ciexyzZ", this, HeaderTexts::zCoordinate};
};

class CIEXYZTRIPLE final : public Quorvex::CompositeOfProperties {
public:
    CIEXYZTRIPLE(const char* name, CompositeOfProperties* owner)
        : CompositeOfProperties(name, owner, HeaderTexts::endpoints) {}

    CIEXYZ ciexyzRed{"ciexyzRed", this, HeaderTexts::redEndpoint};
    CIEXYZ ciexyzGreen{"ciexyzGreen", this, HeaderTexts::greenEndpoint};
    CIEXYZ ciexyzBlue{"ciexyzBlue", this, HeaderTexts::blueEndpoint};
};

/// The header of Windows 95 and NT 4, 108 bytes.
class BITMAPV4HEADER final : public InfoHeader {
public:
    BITMAPV4HEADER() : InfoHeader("BITMAPV4HEADER", HeaderTexts::v4Header) {}
    void StoreSize(std::uint32_t sizeBytes) override { bV4Size.Set(sizeBytes); }
    void CopyTo(NormalHeader& normal) const override;

    HeaderField<std::uint32_t> bV4Size{"bV4Size", this, HeaderTexts::size};
    HeaderField<std::int32_t> bV4Width{"bV4Width", this, HeaderTexts::width};
    HeaderField<std::int32_t> bV4Height{"bV4Height", this, HeaderTexts::height};
    HeaderField<std::uint16_t> bV4Planes{"bV4Planes", this, HeaderTexts::planes};
    HeaderField<std::uint16_t> bV4BitCount{"bV4BitCount", this, HeaderTexts::bitCount};
    HeaderField<std::uint32_t> bV4Compression{"bV4Compression", this, HeaderTexts::compression};
    HeaderField<std::uint32_t> bV4SizeImage{"bV4SizeImage", this, HeaderTexts::sizeImage};
    HeaderField<std::int32_t> bV4XPelsPerMeter{"bV4XPelsPerMeter", this, HeaderTexts::xPelsPerMeter};
    HeaderField<std::int32_t> bV4YPelsPerMeter{"bV4YPelsPerMeter", this, HeaderTexts::yPelsPerMeter};
    HeaderField<std::uint32_t> bV4ClrUsed{"bV4ClrUsed", this, HeaderTexts::clrUsed};
    HeaderField<std::uint32_t> bV4ClrImportant{"bV4ClrImportant", this, HeaderTexts::clrImportant};
    HeaderField<std::uint32_t> bV4RedMask{"bV4RedMask", this, HeaderTexts::redMask};
    HeaderField<std::uint32_t> bV4GreenMask{"bV4GreenMask", this, HeaderTexts::greenMask};
    HeaderField<std::uint32_t> bV4BlueMask{"bV4BlueMask", this, HeaderTexts::blueMask};
    HeaderField<std::uint32_t> bV4AlphaMask{"bV4AlphaMask", this, HeaderTexts::alphaMask};
    HeaderField<std::uint32_t> bV4CSType{"bV4CSType", this, HeaderTexts::v4ColorSpace};
    CIEXYZTRIPLE bV4Endpoints{"bV4Endpoints", this};
    HeaderField<std::uint32_t> bV4GammaRed{"bV4GammaRed", this, HeaderTexts::gammaRed};
    HeaderField<std::uint32_t> bV4GammaGreen{"bV4GammaGreen", this, HeaderTexts::gammaGreen};
    HeaderField<std::uint32_t> bV4GammaBlue{"bV4GammaBlue", this, HeaderTexts::gammaBlue};
};

/// The header of Windows 98 and 2000, 124 bytes.
class BITMAPV5HEADER final : public InfoHeader {
public:
    BITMAPV5HEADER() : InfoHeader("BITMAPV5HEADER", HeaderTexts::v5Header) {}
    void StoreSize(std::uint32_t sizeBytes) override { bV5Size.Set(sizeBytes); }
    void CopyTo(NormalHeader& normal) const override;

    HeaderField<std::uint32_t> bV5Size{"bV5Size", this, HeaderTexts::size};
    HeaderField<std::int32_t> bV5Width{"bV5Width", this, HeaderTexts::width};
    HeaderField<std::int32_t> bV5Height{"bV5Height", this, HeaderTexts::height};
    HeaderField<std::uint16_t> bV5Planes{"bV5Planes", this, HeaderTexts::planes};
    HeaderField<std::uint16_t> bV5BitCount{"bV5BitCount", this, HeaderTexts::bitCount};
    HeaderField<std::uint32_t> bV5Compression{"bV5Compression", this, HeaderTexts::compression};
    HeaderField<std::uint32_t> bV5SizeImage{"bV5SizeImage", this, HeaderTexts::sizeImage};
    HeaderField<std::int32_t> bV5XPelsPerMeter{"bV5XPelsPerMeter", this, HeaderTexts::xPelsPerMeter};
    HeaderField<std::int32_t> bV5YPelsPerMeter{"bV5YPelsPerMeter", this, HeaderTexts::yPelsPerMeter};
    HeaderField<std::uint32_t> bV5ClrUsed{"bV5ClrUsed", this, HeaderTexts::clrUsed};
    HeaderField<std::uint32_t> bV5ClrImportant{"bV5ClrImportant", this, HeaderTexts::clrImportant};
    HeaderField<std::uint32_t> bV5RedMask{"bV5RedMask", this, HeaderTexts::redMask};
    HeaderField<std::uint32_t> bV5GreenMask{"bV5GreenMask", this, HeaderTexts::greenMask};
    HeaderField<std::uint32_t> bV5BlueMask{"bV5BlueMask", this, HeaderTexts::blueMask};
    HeaderField<std::uint32_t> bV5AlphaMask{"bV5AlphaMask", this, HeaderTexts::alphaMask};
    HeaderField<std::uint32_t> bV5CSType{"bV5CSType", this, HeaderTexts::v5ColorSpace};
    CIEXYZTRIPLE bV5Endpoints{"bV5Endpoints", this};
    HeaderField<std::uint32_t> bV5GammaRed{"bV5GammaRed", this, HeaderTexts::gammaRed};
    HeaderField<std::uint32_t> bV5GammaGreen{"bV5GammaGreen", this, HeaderTexts::gammaGreen};
    HeaderField<std::uint32_t> bV5GammaBlue{"bV5GammaBlue", this, HeaderTexts::gammaBlue};
    HeaderField<std::uint32_t> bV5Intent{"bV5Intent", this, HeaderTexts::intent};
    HeaderField<std::uint32_t> bV5ProfileData{"bV5ProfileData", this, HeaderTexts::profileData};
    HeaderField<std::uint32_t> bV5ProfileSize{"bV5ProfileSize", this, HeaderTexts::profileSize};
    HeaderField<std::uint32_t> bV5Reserved{"bV5Reserved", this, HeaderTexts::reserved};
};

} // namespace ET::Img
