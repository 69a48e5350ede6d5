#include "foundation/Thread.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"

#include <exception>
#include <new>

namespace Quorvex::PAL::Threading {

namespace {
// What was caught is kept by name. The classes derived from these two count as them.
constexpr const char* badAllocType = "std::bad_alloc";
constexpr const char* exceptionType = "std::exception";
constexpr const char* otherType = "...";
} // namespace

Thread::~Thread() {
    // The owner has waited: a thread that still ran would write into an object that is gone.
    if (m_handle != Platform::ThreadHandle::None && !Platform::GetThreadCalls().close(m_handle))
        ReportFailure(__LINE__, "CloseHandle");
}

void Thread::Run(Procedure procedure, void* argument) {
    if (m_handle != Platform::ThreadHandle::None) {
        ReportFailure(__LINE__, "Quorvex::PAL::Threading::Thread::Run");
        throw Exception();
    }
    // Stored before the start: the new thread reads both.
    m_procedure = procedure;
    m_argument = argument;
    m_handle = Platform::GetThreadCalls().start(&Thread::Entry, this);
    if (m_handle == Platform::ThreadHandle::None) {
        ReportFailure(__LINE__, "CreateThread");
        throw Exception();
    }
}

void Thread::Wait() {
    if (m_handle == Platform::ThreadHandle::None)
        return;
    const std::uint32_t result = Platform::GetThreadCalls().wait(m_handle);
    if (result == Platform::WaitResult::Failed) {
        ReportFailure(__LINE__, "WaitForSingleObject");
        throw Exception();
    }
    if (result != Platform::WaitResult::Finished)
        throw Exception("Wait: WaitForSingleObject");
}

void Thread::RethrowThreadException() const {
    if (m_exceptionType == badAllocType)
        throw std::bad_alloc();
    if (!m_exceptionType.empty())
        throw Exception(m_exceptionMessage.c_str());
}

void Thread::SetPriority(ThreadPriority priority) noexcept {
    if (m_handle != Platform::ThreadHandle::None)
        Platform::SetThreadPriority(m_handle, priority);
}

void Thread::Entry(void* thread) {
    static_cast<Thread*>(thread)->Execute();
}

void Thread::Execute() noexcept {
    m_exceptionType.clear();
    m_exceptionMessage.clear();
    try {
        m_procedure(m_argument);
    } catch (const std::bad_alloc& failure) {
        Keep(badAllocType, failure.what());
    } catch (const std::exception& failure) {
        Keep(exceptionType, failure.what());
    } catch (...) {
        // Nothing may leave a thread's entry: the process would end.
        Keep(otherType, "unknown exception");
    }
}

// Where even the message finds no memory, the lack of memory is what there is to tell.
void Thread::Keep(const char* type, const char* message) noexcept {
    try {
        m_exceptionMessage = message;
        m_exceptionType = type;
    } catch (const std::bad_alloc&) {
        m_exceptionMessage.clear();
        m_exceptionType = badAllocType;
    }
}

} // namespace Quorvex::PAL::Threading
