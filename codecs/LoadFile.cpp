#include "codecs/LoadFile.h"

#include "data/FileStream.h"

namespace ET::Img {

using Quorvex::FileStream;

namespace {

SharedPtr<FileStream> Open(const Quorvex::String& fileName, std::uint64_t* lastWriteTime) {
    SharedPtr<FileStream> stream = Quorvex::MakeShared<FileStream>(fileName);
    if (lastWriteTime != nullptr)
        *lastWriteTime = stream->GetLastWriteTime();
    return stream;
}

} // namespace

// On a failure the stream ends, and with it the open file, as nobody holds it any more.

SharedPtr<ImageFile> LoadFileByExtension(const Quorvex::String& fileName, const LoadTarget& target, std::int32_t& index,
                                         SharedPtr<ImageBase>& image, std::uint64_t* lastWriteTime) {
    const SharedPtr<FileStream> stream = Open(fileName, lastWriteTime);
    SharedPtr<ImageFile> decoder = DecodeByExtension(fileName, stream, target, index, image);
    stream->Close();
    return decoder;
}

SharedPtr<ImageFile> LoadFileByContent(const Quorvex::String& fileName, const LoadTarget& target, std::int32_t& index,
                                       SharedPtr<ImageBase>& image, std::uint64_t* lastWriteTime) {
    const SharedPtr<FileStream> stream = Open(fileName, lastWriteTime);
    SharedPtr<ImageFile> decoder = DecodeByContent(stream, target, index, image);
    stream->Close();
    return decoder;
}

} // namespace ET::Img
