#include "codecs/bmp/InfoHeader.h"

#include "codecs/bmp/Os2Headers.h"
#include "codecs/bmp/WindowsHeaders.h"

namespace ET::Img {

using Quorvex::SharedPtr;

namespace {

SharedPtr<InfoHeader> CreateForSize(std::uint32_t sizeBytes) {
    switch (sizeBytes) {
    case 0x0C:
        return SharedPtr<OS2_BITMAPINFOHEADER>(new OS2_BITMAPINFOHEADER());
    case 0x10:
    case 0x14:
    case 0x18:
    case 0x20:
    case 0x24:
    case 0x2A:
    case 0x2C:
    case 0x2E:
    case 0x30:
    case 0x3C:
    case 0x40:
        return SharedPtr<OS2_BITMAPINFOHEADER2>(new OS2_BITMAPINFOHEADER2());
    case 0x28:
        return SharedPtr<BITMAPINFOHEADER>(new BITMAPINFOHEADER());
    case 0x34:
        return SharedPtr<BITMAPV2INFOHEADER>(new BITMAPV2INFOHEADER());
    case 0x38:
        return SharedPtr<BITMAPV3INFOHEADER>(new BITMAPV3INFOHEADER());
    case 0x6C:
        return SharedPtr<BITMAPV4HEADER>(new BITMAPV4HEADER());
    case 0x7C:
        return SharedPtr<BITMAPV5HEADER>(new BITMAPV5HEADER());
    default:
        throw Quorvex::Exception();
    }
}

} // namespace

void InfoHeader::LoadRemaining(Quorvex::Stream& stream) {
    const auto& entries = GetEntries();
    for (std::size_t i = 1; i < entries.size(); ++i)
        entries[i]->LoadValueFromStream(stream);
}

SharedPtr<InfoHeader> CreateInfoHeader(std::uint32_t sizeBytes) {
    SharedPtr<InfoHeader> header = CreateForSize(sizeBytes);
    header->StoreSize(sizeBytes);
    return header;
}

} // namespace ET::Img
