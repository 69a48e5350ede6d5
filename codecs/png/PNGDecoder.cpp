#include "codecs/png/PNGDecoder.h"

#include "codecs/TargetCheck.h"
#include "codecs/png/ExpandSamples.h"
#include "codecs/png/PngReader.h"
#include "data/Image.h"

#include <cstring>
#include <vector>

namespace ET::Img {

using namespace Png;
using Quorvex::Data::LockMode;

namespace {

/// Each row is expanded while the processor's cache still holds it.
template <class Channel>
void ReadRows(Reader& reader, const Quorvex::Data::Lock<Quorvex::Data::ColorBGRA<Channel>>& lock, ExpandForm expand) {
    std::vector<std::uint8_t> row(reader.GetHeader().GetRowBytes() + expandReadsBehind);
    for (std::uint32_t y = 0; y < lock.Height; ++y) {
        reader.ReadRow(row.data());
        expand(row.data(), lock.Row(y), lock.Width);
    }
}

/// The rows of all passes gather at the start of the image's own rows, which have room for four samples a pixel.
template <class Channel>
void ReadPasses(Reader& reader, const Quorvex::Data::Lock<Quorvex::Data::ColorBGRA<Channel>>& lock, ExpandForm expand) {
    for (std::uint32_t pass = 0; pass < reader.GetPassCount(); ++pass)
        for (std::uint32_t y = 0; y < lock.Height; ++y)
            reader.ReadRow(reinterpret_cast<std::uint8_t*>(lock.Row(y)));
    const std::size_t rowBytes = reader.GetHeader().GetRowBytes();
    std::vector<std::uint8_t> row(rowBytes + expandReadsBehind);
    for (std::uint32_t y = 0; y < lock.Height; ++y) {
        std::memcpy(row.data(), lock.Row(y), rowBytes);
        expand(row.data(), lock.Row(y), lock.Width);
    }
}

template <class Channel>
void ReadImage(Reader& reader, const Quorvex::Data::Lock<Quorvex::Data::ColorBGRA<Channel>>& lock) {
    const ExpandForm expand = ChooseExpandForm(reader.GetHeader().GetChannels(), sizeof(Channel));
    if (reader.GetHeader().isInterlaced)
        ReadPasses(reader, lock, expand);
    else
        ReadRows(reader, lock, expand);
    reader.ReadEnd();
}

} // namespace

SharedPtr<ImageBase> PNGDecoderImpl::Load(const SharedPtr<ImageBase>& target, std::uint32_t) {
    Reader reader(*m_stream);
    Info = reader.GetHeader().GetImageInfo();
    if (!target)
        return {};
    CheckTarget(*target, Info);
    if (Info.ColorType == Quorvex::Data::ColorTypeEnum::BGRAUInt8)
        ReadImage(reader, target->LockBGRAUInt8(LockMode::ReadWrite));
    else
        ReadImage(reader, target->LockBGRAUInt16(LockMode::ReadWrite));
    target->HasAlpha = reader.GetHeader().HasAlpha() ? 1 : 0;
    return target;
}

} // namespace ET::Img
