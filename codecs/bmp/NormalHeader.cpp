#include "codecs/bmp/NormalHeader.h"

#include "codecs/bmp/Compression.h"
#include "codecs/bmp/FileHeader.h"

namespace ET::Img {

using Quorvex::SharedPtr;

namespace {

std::uint32_t ReadFileHeader(Quorvex::Stream& stream, Quorvex::CompositeOfProperties& root) {
    std::uint16_t signature = 0;
    stream.read(&signature, sizeof(signature));
    stream.seek(0);
    if (signature != BITMAPFILEHEADER::signature)
        return 0;
    const SharedPtr<BITMAPFILEHEADER> header(new BITMAPFILEHEADER());
    header->LoadValueFromStream(stream);
    root.add(SharedPtr<Quorvex::CompositeOfProperties>(header));
    return header->offBits;
}

void ReadInfoHeader(Quorvex::Stream& stream, Quorvex::CompositeOfProperties& root, NormalHeader& normal) {
    std::uint32_t sizeBytes = 0;
    stream.read(&sizeBytes, sizeof(sizeBytes));
    const SharedPtr<InfoHeader> header = CreateInfoHeader(sizeBytes);
    header->LoadRemaining(stream);
    root.add(SharedPtr<Quorvex::CompositeOfProperties>(header));
    header->CopyTo(normal);
    normal.headerBytes = sizeBytes;
}

// The older Windows headers have no room for masks: a file that needs them carries them right behind its header.
void ReadMasksBehindHeader(Quorvex::Stream& stream, NormalHeader& normal) {
    BITMAPV3INFOHEADER& fields = normal.fields;
    const std::uint32_t sizeBytes = fields.biSize;
    const std::uint32_t compression = fields.biCompression;
    if (sizeBytes == 0x28 && (compression == Compression::BitFields || compression == Compression::AlphaBitFields)) {
        fields.biRedMask.LoadValueFromStream(stream);
        fields.biGreenMask.LoadValueFromStream(stream);
        fields.biBlueMask.LoadValueFromStream(stream);
        normal.headerBytes += 3 * sizeof(std::uint32_t);
    }
    if ((sizeBytes == 0x28 || sizeBytes == 0x34) && compression == Compression::AlphaBitFields) {
        fields.biAlphaMask.LoadValueFromStream(stream);
        normal.headerBytes += sizeof(std::uint32_t);
    }
}

} // namespace

NormalHeader::NormalHeader() {
#define QUORVEX_ZERO_FIELD(prefix, type, name, text) fields.prefix##name.Set(0);
    QUORVEX_BITMAP_NORMAL_FIELDS(QUORVEX_ZERO_FIELD, bi)
#undef QUORVEX_ZERO_FIELD
}

ImageInfo NormalHeader::GetImageInfo() const {
    ImageInfo info;
    info.Width = width;
    info.Height = height;
    info.BitsPerPixel = fields.biBitCount;
    info.ColorType = Quorvex::Data::ColorTypeEnum::BGRAUInt8;
    return info;
}

void ReadHeaders(Quorvex::Stream& stream, Quorvex::CompositeOfProperties& root, NormalHeader& normal) {
    normal.offBits = ReadFileHeader(stream, root);
    ReadInfoHeader(stream, root, normal);
    ReadMasksBehindHeader(stream, normal);
}

} // namespace ET::Img
