#include "codecs/ImageFile.h"

namespace ET::Img {

ImageFile::ImageFile(std::unique_ptr<ImplBase> implementation) : Impl(std::move(implementation)) {
    if (Impl != nullptr)
        Impl->Incomplete = &Incomplete;
}

ImageFile::~ImageFile() = default;

ImageInfo ImageFile::GetLoadedInfo() const {
    return Impl != nullptr ? Impl->Info : ImageInfo();
}

ImageFile::ImplBase::~ImplBase() = default;

void ImageFile::ImplBase::SetLogger(SharedPtr<Quorvex::ILogger>) {}

ImageInfo ImageFile::ImplBase::GetInfo(std::uint32_t) {
    return ImageInfo();
}

} // namespace ET::Img
