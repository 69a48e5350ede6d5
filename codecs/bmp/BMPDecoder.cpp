#include "codecs/bmp/BMPDecoder.h"

#include "codecs/TargetCheck.h"
#include "codecs/bmp/Compression.h"
#include "codecs/bmp/Rows.h"
#include "codecs/bmp/RunLength.h"

#include <algorithm>
#include <new>

namespace ET::Img {

using Quorvex::Data::LockMode;

namespace {

// An offset beyond the end is no failure of the headers: no row can be read there.
void SeekToPixels(Quorvex::Stream& stream, const NormalHeader& header) {
    std::uint64_t position = stream.tell();
    if (header.offBits != 0)
        position = header.offBits;
    else if (header.fields.biBitCount > 8)
        position = header.headerBytes + 4 * std::uint64_t(header.fields.biClrUsed);
    // Not beyond: a stream over memory would keep 32 bits of the position and end up anywhere.
    stream.seek(std::min(position, stream.size()));
}

bool IsRunLength(const NormalHeader& header) {
    const std::uint32_t compression = header.fields.biCompression;
    return compression == Compression::RunLength8 || compression == Compression::RunLength4;
}

// Both return whether all data were there. What was not decoded is 0 in every channel. Memory that runs out says
// nothing of the file, which may be whole: that failure passes.

bool DecodeRunLengthPixels(Quorvex::Stream& stream, const NormalHeader& header, const Palette& palette,
                           ImageBase& image) {
    const Quorvex::Data::Lock<Pixel> lock = image.LockBGRAUInt8(LockMode::ReadWrite);
    ClearRows(lock, 0, lock.Height);
    try {
        DecodeRunLength(stream, header, palette, lock);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return false;
    }
    return true;
}

bool DecodeUncompressedPixels(Quorvex::Stream& stream, const NormalHeader& header, const Palette& palette,
                              ImageBase& image) {
    const RowFormat format(header, palette);
    const Quorvex::Data::Lock<Pixel> lock = image.LockBGRAUInt8(LockMode::ReadWrite);
    RowWalk walk(header.fields.biHeight, lock.Height);
    bool isComplete = true;
    try {
        DecodeRows(stream, format, lock, walk);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        isComplete = false;
        const std::uint32_t first = walk.GetFirstRemaining();
        ClearRows(lock, first, first + walk.GetRemaining());
    }
    image.HasAlpha = format.HasExplicitAlpha() && HasVisibleAlpha(lock) ? 1 : 0;
    return isComplete;
}

} // namespace

BMPDecoderImpl::BMPDecoderImpl(SharedPtr<Quorvex::Stream> stream) : m_stream(std::move(stream)) {}

BMPDecoderImpl::~BMPDecoderImpl() = default;

SharedPtr<ImageBase> BMPDecoderImpl::Load(const SharedPtr<ImageBase>& target, std::uint32_t) {
    m_root = Quorvex::MakeShared<Quorvex::CompositeOfProperties>();
    Quorvex::Stream& stream = *m_stream;
    stream.seek(0);
    NormalHeader header;
    ReadHeaders(stream, *m_root, header);
    Info = header.GetImageInfo();
    if (!target)
        return {};

    CheckCompression(header);
    CheckTarget(*target, Info);
    const Palette palette = ReadPalette(stream, header);
    target->SetPixelAspect(header.fields.biXPelsPerMeter.Get(), header.fields.biYPelsPerMeter.Get());
    SeekToPixels(stream, header);
    const auto decodePixels = IsRunLength(header) ? DecodeRunLengthPixels : DecodeUncompressedPixels;
    if (!decodePixels(stream, header, palette, *target))
        *Incomplete = true;
    return target;
}

BMPDecoder::BMPDecoder(SharedPtr<Quorvex::Stream> stream)
    : Decoder(std::make_unique<BMPDecoderImpl>(std::move(stream))) {}

} // namespace ET::Img
