#include "codecs/gif/GIFDecoder.h"

#include "codecs/gif/FileWalk.h"
#include "codecs/gif/FramePixels.h"
#include "foundation/Exception.h"

namespace ET::Img {

using Quorvex::Data::ColorTypeEnum;
using Quorvex::Data::LockMode;

namespace {

ImageInfo InfoOf(const Gif::Frame& frame) {
    return {.Width = frame.width, .Height = frame.height, .BitsPerPixel = 8, .ColorType = ColorTypeEnum::BGRAUInt8};
}

// Codes of 12 bits with strings of less than 4096 bytes: no data can decode to more than that. A small file is not to
// cost gigabytes for an image that it cannot have; one of moderate size it may leave unfilled.
void CheckSize(const Gif::Frame& frame) {
    constexpr std::uint32_t moderatePixels = 1 << 24;
    constexpr std::uint32_t mostPixelsOfByte = 4096;
    if (frame.GetPixelCount() > moderatePixels && frame.GetPixelCount() / mostPixelsOfByte > frame.dataBytes)
        throw Quorvex::Exception();
}

// The file may have been replaced between the two passes.
void CheckKind(const ImageBase& target) {
    if (target.ColorType != ColorTypeEnum::BGRAUInt8)
        throw Quorvex::Exception();
}

} // namespace

std::uint32_t GIFDecoderImpl::GetCount() const {
    if (!m_count) {
        Gif::FileWalk walk(*m_stream);
        std::uint32_t count = 0;
        while (walk.Next())
            ++count;
        m_count = count;
    }
    return *m_count;
}

SharedPtr<ImageBase> GIFDecoderImpl::Load(const SharedPtr<ImageBase>& target, std::uint32_t index) {
    Gif::FileWalk walk(*m_stream);
    std::uint32_t count = 0;
    for (; walk.Next(); ++count) {
        Info = InfoOf(walk.GetFrame());
        if (target && count == index) {
            CheckKind(*target);
            if (!DecodeFrame(walk.GetFrame(), walk.ReadCodesOfFrame(), target->LockBGRAUInt8(LockMode::ReadWrite)))
                *Incomplete = true;
            return target;
        }
    }
    m_count = count;
    if (!target)
        CheckSize(walk.GetFrame());
    else if (target->ColorType == ColorTypeEnum::BGRAUInt8)
        Gif::FillWithBlack(target->LockBGRAUInt8(LockMode::ReadWrite));
    return target;
}

} // namespace ET::Img
