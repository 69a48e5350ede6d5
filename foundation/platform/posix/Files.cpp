#include "foundation/platform/Files.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"
#include "foundation/platform/posix/NativeText.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>

namespace Quorvex::Platform {

namespace {

// Descriptor 0 is a valid one, and a handle of 0 is closed.
FileHandle HandleOf(int descriptor) {
    return static_cast<FileHandle>(descriptor + 1);
}

int DescriptorOf(FileHandle file) {
    return static_cast<int>(file) - 1;
}

[[noreturn]] void RaiseReported(int line, const char* name) {
    ReportFailure(line, name, static_cast<std::uint32_t>(errno));
    throw Exception();
}

[[noreturn]] void RaiseWithCode(const char* name) {
    throw Exception(TextView(name), static_cast<std::uint32_t>(errno));
}

/// Closes the descriptor of a half-opened file when something raises.
class DescriptorGuard {
public:
    explicit DescriptorGuard(int descriptor) : m_descriptor(descriptor) {}
    DescriptorGuard(const DescriptorGuard&) = delete;
    DescriptorGuard& operator=(const DescriptorGuard&) = delete;
    ~DescriptorGuard() {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }
    int Release() {
        const int descriptor = m_descriptor;
        m_descriptor = -1;
        return descriptor;
    }

private:
    int m_descriptor;
};

// What happens to a viewer every day: the file has gone, its folder has, or it belongs to somebody else.
bool IsOrdinaryOpenFailure(int code) {
    return code == ENOENT || code == ENOTDIR || code == EACCES || code == EPERM || code == EBUSY || code == ETXTBSY ||
           code == ENXIO;
}

std::uint64_t FileTimeOf(const statx_timestamp& time) {
    // 369 years with 89 leap days.
    constexpr std::int64_t secondsFrom1601To1970 = 11644473600;
    constexpr std::int64_t unitsPerSecond = 10'000'000;
    const std::int64_t seconds = time.tv_sec + secondsFrom1601To1970;
    return seconds < 0 ? 0 : static_cast<std::uint64_t>(seconds * unitsPerSecond + time.tv_nsec / 100);
}

FileTimes TimesOf(const struct statx& status) {
    FileTimes times;
    times.lastAccess = FileTimeOf(status.stx_atime);
    times.lastWrite = FileTimeOf(status.stx_mtime);
    // A file system that keeps no birth time still has bounds for it: the file was there at its earliest known change.
    times.creation = (status.stx_mask & STATX_BTIME) != 0 ? FileTimeOf(status.stx_btime)
                                                          : std::min(times.lastWrite, FileTimeOf(status.stx_ctime));
    return times;
}

} // namespace

OpenedFile OpenFileForReading(const String& path) {
    const std::string native = NativeFromWide(path);
    // Not blocking: to open a pipe that nobody writes to would wait for ever.
    const int descriptor = open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (descriptor < 0) {
        if (IsOrdinaryOpenFailure(errno))
            throw Exception();
        RaiseReported(__LINE__, "open");
    }
    DescriptorGuard guard(descriptor);
    struct statx status {};
    if (statx(descriptor, "", AT_EMPTY_PATH, STATX_BASIC_STATS | STATX_BTIME, &status) != 0)
        RaiseReported(__LINE__, "statx");
    // A folder opens for reading too, and a device may have no end.
    if (!S_ISREG(status.stx_mode))
        throw Exception();
    return {HandleOf(guard.Release()), status.stx_size, TimesOf(status)};
}

void CloseFile(FileHandle file) noexcept {
    if (file != FileHandle::Closed && close(DescriptorOf(file)) != 0)
        ReportFailure(__LINE__, "close");
}

void ReadFromFile(FileHandle file, void* destination, std::uint32_t bytes) {
    auto* next = static_cast<std::byte*>(destination);
    // One call gives less where a signal comes in between, and never more than 2 GiB.
    std::uint32_t left = bytes;
    while (left != 0) {
        const ssize_t got = read(DescriptorOf(file), next, left);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            RaiseReported(__LINE__, "read");
        if (got == 0)
            throw Exception();
        next += got;
        left -= static_cast<std::uint32_t>(got);
    }
}

std::uint64_t TellInFile(FileHandle file) {
    const off_t position = lseek(DescriptorOf(file), 0, SEEK_CUR);
    if (position < 0)
        RaiseReported(__LINE__, "lseek");
    return static_cast<std::uint64_t>(position);
}

void SeekInFile(FileHandle file, std::uint64_t positionBytes) {
    if (lseek(DescriptorOf(file), static_cast<off_t>(positionBytes), SEEK_SET) < 0)
        RaiseReported(__LINE__, "lseek");
}

// The system shares files with everybody; an advisory lock stands in for a file that is opened with nobody.
FileHandle OpenFileForAppending(const String& path) {
    const int descriptor = open(NativeFromWide(path).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOCTTY, 0666);
    if (descriptor < 0)
        RaiseWithCode("CreateFile");
    DescriptorGuard guard(descriptor);
    // A file system that knows no locks has nobody to keep out.
    if (flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        RaiseWithCode("CreateFile");
    return HandleOf(guard.Release());
}

std::uint64_t SeekToEndOfFile(FileHandle file) {
    const off_t position = lseek(DescriptorOf(file), 0, SEEK_END);
    if (position < 0)
        RaiseWithCode("SetFilePointer");
    return static_cast<std::uint64_t>(position);
}

void WriteToFile(FileHandle file, const void* source, std::uint32_t bytes) {
    const auto* next = static_cast<const std::byte*>(source);
    std::uint32_t left = bytes;
    while (left != 0) {
        const ssize_t put = write(DescriptorOf(file), next, left);
        if (put < 0 && errno == EINTR)
            continue;
        if (put < 0)
            RaiseWithCode("WriteFile");
        next += put;
        left -= static_cast<std::uint32_t>(put);
    }
}

} // namespace Quorvex::Platform
