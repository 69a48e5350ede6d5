#pragma once

#include "codecs/bmp/InfoHeader.h"

namespace ET::Img {

/// The header of OS/2 1.x, 12 bytes with 16-bit sizes. Windows calls it BITMAPCOREHEADER.
class OS2_BITMAPINFOHEADER final : public InfoHeader {
public:
    OS2_BITMAPINFOHEADER() : InfoHeader("BITMAPINFOHEADER") {}
    void StoreSize(std::uint32_t sizeBytes) override { cbFix.Set(sizeBytes); }
    void CopyTo(NormalHeader& normal) const override;

    Quorvex::UninitializedProperty<std::uint32_t> cbFix{"cbFix", this};
    Quorvex::UninitializedProperty<std::uint16_t> cx{"cx", this};
    Quorvex::UninitializedProperty<std::uint16_t> cy{"cy", this};
    Quorvex::UninitializedProperty<std::uint16_t> cPlanes{"cPlanes", this};
    Quorvex::UninitializedProperty<std::uint16_t> cBitCount{"cBitCount", this};
};

/// The header of OS/2 2.x, 64 bytes of which a writer may leave out any tail behind the first 16.
class OS2_BITMAPINFOHEADER2 final : public InfoHeader {
public:
    OS2_BITMAPINFOHEADER2() : InfoHeader("BITMAPINFOHEADER2") {}
    void StoreSize(std::uint32_t sizeBytes) override { cbFix.Set(sizeBytes); }
    void LoadRemaining(Quorvex::Stream& stream) override;
    void CopyTo(NormalHeader& normal) const override;

    Quorvex::UninitializedProperty<std::uint32_t> cbFix{"cbFix", this};
    Quorvex::UninitializedProperty<std::uint32_t> cx{"cx", this};
    Quorvex::UninitializedProperty<std::uint32_t> cy{"cy", this};
    Quorvex::UninitializedProperty<std::uint16_t> cPlanes{"cPlanes", this};
    Quorvex::UninitializedProperty<std::uint16_t> cBitCount{"cBitCount", this};
    Quorvex::UninitializedProperty<std::uint32_t> ulCompression{"ulCompression", this};
    Quorvex::UninitializedProperty<std::uint32_t> cbImage{"cbImage", this};
    Quorvex::UninitializedProperty<std::uint32_t> cxResolution{"cxResolution", this};
    Quorvex::UninitializedProperty<std::uint32_t> cyResolution{"cyResolution", this};
    Quorvex::UninitializedProperty<std::uint32_t> cclrUsed{"cclrUsed", this};
    Quorvex::UninitializedProperty<std::uint32_t> cclrImportant{"cclrImportant", this};
    Quorvex::UninitializedProperty<std::uint16_t> usUnits{"usUnits", this};
    Quorvex::UninitializedProperty<std::uint16_t> usReserved{"usReserved", this};
    Quorvex::UninitializedProperty<std::uint16_t> usRecording{"usRecording", this};
    Quorvex::UninitializedProperty<std::uint16_t> usRendering{"usRendering", this};
    Quorvex::UninitializedProperty<std::uint32_t> cSize1{"cSize1", this};
    Quorvex::UninitializedProperty<std::uint32_t> cSize2{"cSize2", this};
    Quorvex::UninitializedProperty<std::uint32_t> ulColorEncoding{"ulColorEncoding", this};
    Quorvex::UninitializedProperty<std::uint32_t> ulIdentifier{"ulIdentifier", this};
};

} // namespace ET::Img
