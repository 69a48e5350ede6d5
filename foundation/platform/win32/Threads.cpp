#include "foundation/platform/Threads.h"

#include "foundation/Report.h"

#include <windows.h>

#include <memory>
#include <new>

namespace Quorvex::Platform {

namespace {

/// What the new thread takes over from the one that started it.
struct Errand {
    void (*procedure)(void*);
    void* argument;
};

HANDLE NativeOf(ThreadHandle thread) {
    return reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(thread));
}

// A 32-bit system starts threads on a stack that the compiler's vector code takes to be better aligned than it is.
#if defined(__i386__)
__attribute__((force_align_arg_pointer))
#endif
DWORD WINAPI
RunErrand(void* errand) {
    const std::unique_ptr<Errand> owned(static_cast<Errand*>(errand));
    owned->procedure(owned->argument);
    return 0;
}

ThreadHandle Start(void (*procedure)(void*), void* argument) {
    // Memory that runs out here is a thread that could not be started, like any other reason.
    std::unique_ptr<Errand> errand(new (std::nothrow) Errand{procedure, argument});
    if (!errand) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return ThreadHandle::None;
    }
    const HANDLE native = CreateThread(nullptr, 0, &RunErrand, errand.get(), 0, nullptr);
    if (native == nullptr)
        return ThreadHandle::None;
    // The thread owns it now.
    static_cast<void>(errand.release());
    return static_cast<ThreadHandle>(reinterpret_cast<std::uintptr_t>(native));
}

std::uint32_t Wait(ThreadHandle thread) {
    return WaitForSingleObject(NativeOf(thread), INFINITE);
}

bool Close(ThreadHandle thread) {
    return CloseHandle(NativeOf(thread)) != FALSE;
}

// A thread that has ended still takes a priority as long as its handle is open.
void SetNativePriority(HANDLE thread, ThreadPriority priority) {
    if (!::SetThreadPriority(thread, static_cast<int>(priority)))
        ReportFailure(__LINE__, "SetThreadPriority");
}

} // namespace

ThreadCalls& GetThreadCalls() {
    static ThreadCalls calls{&Start, &Wait, &Close};
    return calls;
}

void SetThreadPriority(ThreadHandle thread, ThreadPriority priority) noexcept {
    SetNativePriority(NativeOf(thread), priority);
}

void SetCurrentThreadPriority(ThreadPriority priority) noexcept {
    SetNativePriority(GetCurrentThread(), priority);
}

} // namespace Quorvex::Platform
