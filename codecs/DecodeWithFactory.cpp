#include "codecs/DecodeWithFactory.h"

#include "foundation/Exception.h"
#include "video/Context.h"

namespace ET::Img {

namespace {

const CodecRegistry& RegistryOf(const LoadTarget& target) {
    return target.registry != nullptr ? *target.registry : GetCodecRegistry();
}

std::int32_t ResolveIndex(const ImageFile& decoder, std::int32_t index) {
    switch (index) {
    case ImageIndex::Default:
        return static_cast<std::int32_t>(decoder.GetDefaultIndex() + 1);
    case ImageIndex::Last:
        return static_cast<std::int32_t>(decoder.GetCount());
    default:
        return index;
    }
}

} // namespace

SharedPtr<ImageFile> DecodeWithFactory(const CodecFactory& factory, const SharedPtr<Quorvex::Stream>& stream,
                                       const LoadTarget& target, std::int32_t& index, SharedPtr<ImageBase>& image) {
    SharedPtr<ImageFile> decoder = factory.CreateDecoder(stream);
    if (target.logger)
        decoder->SetLogger(target.logger);
    index = ResolveIndex(*decoder, index);
    const auto zeroBased = static_cast<std::uint32_t>(index) - 1;
    const ImageInfo info = decoder->GetInfo(zeroBased);
    const SharedPtr<ImageBase> created =
        target.context->CreateImage(info.ColorType, info.Width, info.Height, info.AllocatedWidth, info.AllocatedHeight);
    stream->seek(0);
    image = decoder->Load(created, zeroBased);
    if (!image)
        throw Quorvex::Exception();
    return decoder;
}

SharedPtr<ImageFile> DecodeByExtension(const Quorvex::String& fileName, const SharedPtr<Quorvex::Stream>& stream,
                                       const LoadTarget& target, std::int32_t& index, SharedPtr<ImageBase>& image) {
    for (const SharedPtr<CodecFactory>& factory : RegistryOf(target)) {
        if (MatchesPattern(factory->GetFilePattern(), fileName))
            return DecodeWithFactory(*factory, stream, target, index, image);
    }
    throw Quorvex::Exception();
}

SharedPtr<ImageFile> DecodeByContent(const SharedPtr<Quorvex::Stream>& stream, const LoadTarget& target,
                                     std::int32_t& index, SharedPtr<ImageBase>& image) {
    const std::int32_t indexAtEntry = index;
    for (const SharedPtr<CodecFactory>& factory : RegistryOf(target)) {
        try {
            return DecodeWithFactory(*factory, stream, target, index, image);
        } catch (const std::exception&) {
            // No format has a magic number of its own here: a decoder that fails has said that the file is not its own.
            index = indexAtEntry;
            image.reset();
            stream->seek(0);
        }
    }
    throw Quorvex::Exception();
}

} // namespace ET::Img
