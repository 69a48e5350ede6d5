#pragma once

#include "foundation/Thread.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace Quorvex::Platform::Video::Software {

/// Threads that share the rows of a picture: each takes the next unit of work by an atomic counter until none is left.
/// They start with the first work that is worth it and wait for more until the object ends. One thread at a time uses
/// the object; it takes part in the work and returns when all of it is done.
class RowWorkers {
public:
    RowWorkers() = default;
    RowWorkers(const RowWorkers&) = delete;
    RowWorkers& operator=(const RowWorkers&) = delete;
    ~RowWorkers();

    /// Up to 8, and no more than there are processors. Numbers of workers lie below this.
    std::uint32_t LargestCount() const { return largestCount; }

    /// Calls work(worker, unit) for each unit below UNIT_COUNT, in no particular order, on as many threads as are worth
    /// it. The calling thread is worker 0. WORK must not raise.
    template <class Work>
    void Run(std::uint32_t unitCount, std::uint32_t workerCount, const Work& work) {
        RunJob({[](const void* context, std::uint32_t worker, std::uint32_t unit) {
                    (*static_cast<const Work*>(context))(worker, unit);
                },
                &work, unitCount},
               workerCount);
    }

private:
    struct Job {
        void (*work)(const void* context, std::uint32_t worker, std::uint32_t unit);
        const void* context;
        std::uint32_t unitCount;
    };
    struct Worker {
        RowWorkers* owner;
        std::uint32_t number;
        PAL::Threading::Thread thread;
    };

    void RunJob(const Job& newJob, std::uint32_t workerCount);
    void StartThreads(std::uint32_t count);
    void WorkUntilStopped(std::uint32_t number);
    bool Join(std::uint32_t number);
    void Leave();
    void WakeUp(std::condition_variable& sleepers);
    void TakeUnits(std::uint32_t number);

    const std::uint32_t largestCount = CountOfProcessors();
    static std::uint32_t CountOfProcessors();

    std::vector<std::unique_ptr<Worker>> threads;
    bool canStartThreads = true;
    Job job{};
    std::atomic<std::uint32_t> nextUnit = 0;
    /// The number of threads within the job, and in the highest bit whether more may join. A thread that wakes up when
    /// the work is done is not waited for.
    std::atomic<std::uint32_t> attendance = 0;
    std::atomic<std::uint32_t> wantedThreads = 0;
    std::atomic<std::uint32_t> jobNumber = 0;
    std::atomic<bool> isStopped = false;

    // Sleep and wake-up alone; rows are handed out by the counter. The wait of std::atomic would be shorter, but where
    // the system has no futex, libstdc++ 12 compares the value before it locks, and a wake-up in between is lost.
    std::mutex sleepMutex;
    std::condition_variable jobPosted;
    std::condition_variable everyoneLeft;
};

} // namespace Quorvex::Platform::Video::Software
