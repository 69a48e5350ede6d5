#include "data/FileStream.h"

#include "foundation/Exception.h"

#include <utility>

namespace Quorvex {

FileStream::FileStream(const String& fileName) : FileName(fileName) {
    const Platform::OpenedFile opened = Platform::OpenFileForReading(fileName);
    Handle = opened.handle;
    Size = opened.sizeBytes;
    Times = opened.times;
}

std::uint64_t FileStream::tell() const {
    CheckOpen("FileStream::tell");
    return Platform::TellInFile(Handle);
}

void FileStream::read(void* destination, std::uint32_t byteCount) {
    CheckOpen("FileStream::read");
    Platform::ReadFromFile(Handle, destination, byteCount);
}

void FileStream::seek(std::uint64_t position) {
    CheckOpen("FileStream::seek");
    Platform::SeekInFile(Handle, position);
}

std::uint64_t FileStream::size() const {
    CheckOpen("FileStream::size");
    return Size;
}

StreamLock FileStream::lock(std::uint32_t byteCount) {
    CheckOpen("FileStream::lock");
    return {this, nullptr, byteCount};
}

std::unique_ptr<Stream> FileStream::Clone() const {
    CheckOpen("FileStream::Clone");
    auto clone = std::make_unique<FileStream>(FileName);
    clone->seek(tell());
    return clone;
}

void FileStream::Close() noexcept {
    Platform::CloseFile(std::exchange(Handle, Platform::FileHandle::Closed));
}

std::uint64_t FileStream::GetLastWriteTime() const {
    CheckOpen("FileStream::GetLastWriteTime");
    return Times.lastWrite;
}

void FileStream::CheckOpen(const char* failure) const {
    if (Handle == Platform::FileHandle::Closed)
        throw Exception(failure);
}

} // namespace Quorvex
