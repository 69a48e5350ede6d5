#include "codecs/ico/ICODecoder.h"

#include "codecs/bmp/BMPDecoder.h"
#include "codecs/bmp/Rows.h"
#include "codecs/ico/AndMask.h"
#include "codecs/ico/EntryStream.h"
#include "codecs/png/PNGDecoder.h"
#include "data/StreamBuffer.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace ET::Img {

using namespace Ico;
using Quorvex::MemoryStream;
using Quorvex::Data::LockMode;

namespace {

// More than a bitmap's headers can have: 14 bytes of the file, 124 of the image, four masks.
constexpr std::uint32_t mostHeaderBytes = 256;

// A bitmap that ends early shows what it has, but no few bytes shall take gigabytes. Two bytes of a run-length code
// make 255 pixels.
constexpr std::uint64_t largestWithoutBytes = 1 << 24;
constexpr std::uint64_t pixelsPerByte = 128;

void CheckPlausible(const ImageInfo& info, std::uint64_t byteCount) {
    if (std::uint64_t(info.Width) * info.Height > std::max(largestWithoutBytes, byteCount * pixelsPerByte))
        throw Quorvex::Exception();
}

/// What the entry itself says. The height of a bitmap is taken as it stands there, with the mask's rows.
ImageInfo Measure(Quorvex::Stream& file, const Entry& entry, std::uint64_t& budget) {
    const SharedPtr<EntryStream> stream = Quorvex::MakeShared<EntryStream>(file, entry.offset, entry.size, budget);
    try {
        return PNGDecoder(stream).GetInfo(0);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        stream->seek(0);
    }
    const Quorvex::StreamBuffer head(stream->lock(std::min(entry.size, mostHeaderBytes)));
    const ImageInfo info = BMPDecoder(Quorvex::MakeShared<MemoryStream>(head.GetData(), head.GetSize())).GetInfo(0);
    CheckPlausible(info, entry.size);
    return info;
}

/// The bitmap of an icon counts the rows of its image and of its mask, which are as many.
void HalveHeight(std::uint8_t* header, std::uint32_t byteCount) {
    constexpr std::uint32_t heightOffset = 8;
    std::int32_t height = 0;
    if (byteCount < heightOffset + sizeof(height))
        throw Quorvex::Exception();
    std::memcpy(&height, header + heightOffset, sizeof(height));
    height >>= 1;
    std::memcpy(header + heightOffset, &height, sizeof(height));
}

} // namespace

ICODecoderImpl::ICODecoderImpl(SharedPtr<Quorvex::Stream> stream)
    : m_stream(std::move(stream)), m_entries(ReadDirectory(*m_stream)) {
    m_defaultIndex = FindDefaultIndex();
}

/// The first of the highest with the most bits per pixel.
std::uint32_t ICODecoderImpl::FindDefaultIndex() const {
    std::uint32_t best = 0, bestHeight = 0, bestBitCount = 0;
    // Entries that lie side by side are read once at most. A directory that names the same bytes again and again stays
    // in proportion to its file.
    std::uint64_t budget = 2 * m_stream->size() + mostHeaderBytes;
    for (std::uint32_t i = 0; i < m_entries.size(); ++i) {
        std::uint32_t height = m_entries[i].height, bitCount = m_entries[i].bitCount;
        if (!m_entries[i].TellsSize()) {
            try {
                const ImageInfo info = Measure(*m_stream, m_entries[i], budget);
                height = info.Height;
                bitCount = info.BitsPerPixel;
            } catch (const std::bad_alloc&) {
                throw;
            } catch (const std::exception&) {
                // The others may be whole.
                continue;
            }
        }
        if (height > bestHeight || (height == bestHeight && bitCount > bestBitCount)) {
            best = i;
            bestHeight = height;
            bestBitCount = bitCount;
        }
    }
    return best;
}

ICODecoderImpl::Bytes ICODecoderImpl::ReadEntry(std::uint32_t index) const {
    if (index >= m_entries.size())
        throw Quorvex::Exception();
    const Entry& entry = m_entries[index];
    if (entry.size == 0 || std::uint64_t(entry.offset) + entry.size > m_stream->size())
        throw Quorvex::Exception();
    Bytes bytes{std::make_unique_for_overwrite<std::uint8_t[]>(entry.size), entry.size};
    const std::uint64_t position = m_stream->tell();
    m_stream->seek(entry.offset);
    m_stream->read(bytes.data.get(), bytes.size);
    m_stream->seek(position);
    return bytes;
}

SharedPtr<ImageBase> ICODecoderImpl::Load(const SharedPtr<ImageBase>& target, std::uint32_t index) {
    Bytes bytes = ReadEntry(index);
    try {
        PNGDecoder decoder(Quorvex::MakeShared<MemoryStream>(bytes.data.get(), bytes.size));
        return Decode(decoder, target);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return DecodeBitmap(std::move(bytes), target);
    }
}

SharedPtr<ImageBase> ICODecoderImpl::Decode(ImageFile& decoder, const SharedPtr<ImageBase>& target) {
    if (target)
        return decoder.Load(target, 0);
    Info = decoder.GetInfo(0);
    return {};
}

SharedPtr<ImageBase> ICODecoderImpl::DecodeBitmap(Bytes bytes, const SharedPtr<ImageBase>& target) {
    HalveHeight(bytes.data.get(), bytes.size);
    const SharedPtr<MemoryStream> stream = Quorvex::MakeShared<MemoryStream>(bytes.data.get(), bytes.size);
    BMPDecoder decoder(stream);
    SharedPtr<ImageBase> image = Decode(decoder, target);
    if (!image) {
        CheckPlausible(Info, bytes.size);
        return image;
    }
    // What is left of a bitmap that ends early are pixels and no mask.
    const bool hasMask = !decoder.IsIncomplete() && ReadMask(*stream, *image);
    // Without a mask it is the fourth byte that tells, where any pixel has one.
    if (!hasMask && decoder.GetLoadedInfo().BitsPerPixel == 32)
        image->HasAlpha = HasVisibleAlpha(image->LockBGRAUInt8(LockMode::ReadOnly)) ? 1 : 0;
    return image;
}

} // namespace ET::Img
