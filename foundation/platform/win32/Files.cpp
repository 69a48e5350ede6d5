#include "foundation/platform/Files.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"
#include "foundation/Version.h"
#include "foundation/platform/win32/WideText.h"
#include "foundation/platform/win32/Wow64RedirectionGuard.h"

#include <windows.h>

namespace Quorvex::Platform {

namespace {

HANDLE NativeOf(FileHandle file) {
    return reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(file));
}

FileHandle HandleOf(HANDLE native) {
    return static_cast<FileHandle>(reinterpret_cast<std::uintptr_t>(native));
}

[[noreturn]] void RaiseReported(int line, const char* name) {
    ReportFailure(line, name, GetLastError());
    throw Exception();
}

[[noreturn]] void RaiseWithCode(const char* name) {
    throw Exception(TextView(name), std::uint32_t{GetLastError()});
}

/// INVALID_HANDLE_VALUE after a failure.
HANDLE Open(const String& path, DWORD access, DWORD sharing, DWORD disposition) {
    if (IsUnicodeSystem())
        return CreateFileW(WideUnits(path.ToWide()), access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL,
                           nullptr);
    return CreateFileA(path.ToANSI().Narrow(), access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

// What happens to a viewer every day: the file has gone, its folder has, it is denied, or somebody writes it.
bool IsOrdinaryOpenFailure(DWORD code) {
    return code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND || code == ERROR_ACCESS_DENIED ||
           code == ERROR_SHARING_VIOLATION;
}

/// A low half of all ones is a failure only if the system has an error to tell.
bool IsFailure(DWORD lowHalf) {
    return lowHalf == INVALID_FILE_SIZE && GetLastError() != NO_ERROR;
}

std::uint64_t Joined(DWORD low, DWORD high) {
    return static_cast<std::uint64_t>(high) << 32 | low;
}

std::uint64_t SizeOf(HANDLE native) {
    DWORD high = 0;
    const DWORD low = GetFileSize(native, &high);
    if (IsFailure(low))
        RaiseReported(__LINE__, "GetFileSize");
    return Joined(low, high);
}

FileTimes TimesOf(HANDLE native) {
    FILETIME creation{};
    FILETIME lastAccess{};
    FILETIME lastWrite{};
    if (!GetFileTime(native, &creation, &lastAccess, &lastWrite))
        RaiseReported(__LINE__, "GetFileTime");
    const auto joined = [](const FILETIME& time) { return Joined(time.dwLowDateTime, time.dwHighDateTime); };
    return {joined(creation), joined(lastAccess), joined(lastWrite)};
}

/// Empty of meaning after a failure, which IsFailure tells by the low half.
struct Position {
    DWORD low;
    LONG high;
};

Position Move(FileHandle file, std::uint64_t distanceBytes, DWORD origin) {
    Position position{0, static_cast<LONG>(distanceBytes >> 32)};
    position.low = SetFilePointer(NativeOf(file), static_cast<LONG>(distanceBytes), &position.high, origin);
    return position;
}

std::uint64_t MoveReported(FileHandle file, std::uint64_t distanceBytes, DWORD origin) {
    const Position position = Move(file, distanceBytes, origin);
    if (IsFailure(position.low))
        RaiseReported(__LINE__, "SetFilePointer");
    return Joined(position.low, static_cast<DWORD>(position.high));
}

} // namespace

OpenedFile OpenFileForReading(const String& path) {
    const Wow64RedirectionGuard redirection(path);
    // Others may read the file meanwhile, but not write it: it is not to change under the decoder.
    const HANDLE native = Open(path, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    if (native == INVALID_HANDLE_VALUE) {
        if (IsOrdinaryOpenFailure(GetLastError()))
            throw Exception();
        RaiseReported(__LINE__, IsUnicodeSystem() ? "CreateFileW" : "CreateFileA");
    }
    // The size and the times belong to the opening; a file that has none is closed again.
    try {
        return {HandleOf(native), SizeOf(native), TimesOf(native)};
    } catch (...) {
        CloseFile(HandleOf(native));
        throw;
    }
}

void CloseFile(FileHandle file) noexcept {
    if (file != FileHandle::Closed && !CloseHandle(NativeOf(file)))
        ReportFailure(__LINE__, "CloseHandle");
}

void ReadFromFile(FileHandle file, void* destination, std::uint32_t bytes) {
    DWORD got = 0;
    if (!ReadFile(NativeOf(file), destination, bytes, &got, nullptr))
        RaiseReported(__LINE__, "ReadFile");
    // The end of the file; a decoder stops at it, and it is no failure of the system.
    if (got != bytes)
        throw Exception();
}

std::uint64_t TellInFile(FileHandle file) {
    return MoveReported(file, 0, FILE_CURRENT);
}

void SeekInFile(FileHandle file, std::uint64_t positionBytes) {
    MoveReported(file, positionBytes, FILE_BEGIN);
}

FileHandle OpenFileForAppending(const String& path) {
    const HANDLE native = Open(path, GENERIC_WRITE, 0, OPEN_ALWAYS);
    if (native == INVALID_HANDLE_VALUE)
        RaiseWithCode("CreateFile");
    return HandleOf(native);
}

std::uint64_t SeekToEndOfFile(FileHandle file) {
    const Position position = Move(file, 0, FILE_END);
    if (IsFailure(position.low))
        RaiseWithCode("SetFilePointer");
    return Joined(position.low, static_cast<DWORD>(position.high));
}

void WriteToFile(FileHandle file, const void* source, std::uint32_t bytes) {
    DWORD put = 0;
    if (!WriteFile(NativeOf(file), source, bytes, &put, nullptr) || put != bytes)
        RaiseWithCode("WriteFile");
}

} // namespace Quorvex::Platform
