#pragma once

#include "data/Stream.h"
#include "foundation/String.h"
#include "foundation/platform/Files.h"

namespace Quorvex {

/// A file on disk, for reading; others may read it at the same time. Size and times are those of the moment it was
/// opened. Failures of the system raise Exception without text, and are reported to the log unless they belong to a
/// viewer's day: a file that is missing, denied or in use, or one that ends too early. A closed stream raises Exception
/// "FileStream::" with the name of the operation.
class FileStream final : public Stream {
public:
    explicit FileStream(const String& fileName);
    FileStream(const FileStream&) = delete;
    FileStream& operator=(const FileStream&) = delete;
    ~FileStream() override { Close(); }

    std::uint64_t tell() const override;
    void read(void* destination, std::uint32_t byteCount) override;
    void seek(std::uint64_t position) override;
    std::uint64_t size() const override;
    /// Neither reads nor moves: a StreamBuffer reads.
    StreamLock lock(std::uint32_t byteCount) override;
    /// Opens the file anew; raises as opening does where it has gone.
    std::unique_ptr<Stream> Clone() const override;

    /// Gives the file back to the system, so that no file is held while its image is on screen. There is no reopening;
    /// a second call does nothing.
    void Close() noexcept;

    /// In units of 100 ns since 1601-01-01 00:00 UTC.
    std::uint64_t GetLastWriteTime() const;

private:
    void CheckOpen(const char* failure) const;

    Platform::FileHandle Handle = Platform::FileHandle::Closed;
    std::uint64_t Size = 0;
    String FileName;
    Platform::FileTimes Times;
};

} // namespace Quorvex
