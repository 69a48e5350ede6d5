#pragma once

#include "codecs/bmp/HeaderTexts.h"
#include "codecs/bmp/InfoHeader.h"
#include "codecs/bmp/WindowsFields.h"

namespace ET::Img {

/// A field of a Windows header, with its explanation for the tree of fields.
template <class T>
using HeaderField = Quorvex::UninitializedPropertyWithDescription<T>;

#define QUORVEX_HEADER_FIELD(prefix, type, name, text)                                                                 \
    HeaderField<type> prefix##name{#prefix #name, this, HeaderTexts::text};

/// The header of Windows 3, 40 bytes; the later ones of 52 and 56 bytes append the masks to it.
class BITMAPINFOHEADER : public InfoHeader {
public:
    BITMAPINFOHEADER() : BITMAPINFOHEADER("BITMAPINFOHEADER", HeaderTexts::infoHeader) {}
    void StoreSize(std::uint32_t sizeBytes) override { biSize.Set(sizeBytes); }
    void CopyTo(NormalHeader& normal) const override;

    QUORVEX_BITMAP_INFO_FIELDS(QUORVEX_HEADER_FIELD, bi)

protected:
    BITMAPINFOHEADER(const char* name, const char* description) : InfoHeader(name, description) {}
};

class BITMAPV2INFOHEADER : public BITMAPINFOHEADER {
public:
    BITMAPV2INFOHEADER() : BITMAPV2INFOHEADER("BITMAPV2INFOHEADER", HeaderTexts::v2Header) {}
    void CopyTo(NormalHeader& normal) const override;

    QUORVEX_BITMAP_COLOR_MASK_FIELDS(QUORVEX_HEADER_FIELD, bi)

protected:
    BITMAPV2INFOHEADER(const char* name, const char* description) : BITMAPINFOHEADER(name, description) {}
};

class BITMAPV3INFOHEADER final : public BITMAPV2INFOHEADER {
public:
    BITMAPV3INFOHEADER() : BITMAPV2INFOHEADER("BITMAPV3INFOHEADER", HeaderTexts::v3Header) {}
    void CopyTo(NormalHeader& normal) const override;

    QUORVEX_BITMAP_ALPHA_MASK_FIELD(QUORVEX_HEADER_FIELD, bi)
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

    QUORVEX_BITMAP_NORMAL_FIELDS(QUORVEX_HEADER_FIELD, bV4)
    HeaderField<std::uint32_t> bV4CSType{"bV4CSType", this, HeaderTexts::v4ColorSpace};
    CIEXYZTRIPLE bV4Endpoints{"bV4Endpoints", this};
    QUORVEX_BITMAP_GAMMA_FIELDS(QUORVEX_HEADER_FIELD, bV4)
};

/// The header of Windows 98 and 2000, 124 bytes.
class BITMAPV5HEADER final : public InfoHeader {
public:
    BITMAPV5HEADER() : InfoHeader("BITMAPV5HEADER", HeaderTexts::v5Header) {}
    void StoreSize(std::uint32_t sizeBytes) override { bV5Size.Set(sizeBytes); }
    void CopyTo(NormalHeader& normal) const override;

    QUORVEX_BITMAP_NORMAL_FIELDS(QUORVEX_HEADER_FIELD, bV5)
    HeaderField<std::uint32_t> bV5CSType{"bV5CSType", this, HeaderTexts::v5ColorSpace};
    CIEXYZTRIPLE bV5Endpoints{"bV5Endpoints", this};
    QUORVEX_BITMAP_GAMMA_FIELDS(QUORVEX_HEADER_FIELD, bV5)
    HeaderField<std::uint32_t> bV5Intent{"bV5Intent", this, HeaderTexts::intent};
    HeaderField<std::uint32_t> bV5ProfileData{"bV5ProfileData", this, HeaderTexts::profileData};
    HeaderField<std::uint32_t> bV5ProfileSize{"bV5ProfileSize", this, HeaderTexts::profileSize};
    HeaderField<std::uint32_t> bV5Reserved{"bV5Reserved", this, HeaderTexts::reserved};
};

#undef QUORVEX_HEADER_FIELD

} // namespace ET::Img
