#pragma once

#include "foundation/Thread.h"

#include <atomic>
#include <cstdint>
#include <exception>
#include <memory>
#include <vector>

namespace ET::Img {

/// Calls work() on that many threads at once, of which this is one, and returns when all have ended. Raises what the
/// work raised, and Exception without text, after a report, where a thread cannot be started.
template <class Work>
void ShareWork(std::uint32_t threadCount, const Work& work) {
    using Quorvex::PAL::Threading::Thread;
    std::vector<std::unique_ptr<Thread>> threads;
    std::exception_ptr failure;
    try {
        for (std::uint32_t i = 1; i < threadCount; ++i) {
            threads.push_back(std::make_unique<Thread>());
            threads.back()->Run([](void* argument) { (*static_cast<const Work*>(argument))(); },
                                const_cast<Work*>(&work));
        }
        work();
    } catch (...) {
        failure = std::current_exception();
    }
    for (const std::unique_ptr<Thread>& thread : threads) {
        thread->Wait();
        try {
            thread->RethrowThreadException();
        } catch (...) {
            failure = failure ? failure : std::current_exception();
        }
    }
    if (failure)
        std::rethrow_exception(failure);
}

} // namespace ET::Img
