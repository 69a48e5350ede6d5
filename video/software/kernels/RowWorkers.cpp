#include "video/software/kernels/RowWorkers.h"

#include "foundation/platform/Processors.h"

#include <algorithm>

namespace Quorvex::Platform::Video::Software {

namespace {

constexpr std::uint32_t isOpen = 0x80000000;

} // namespace

RowWorkers::~RowWorkers() {
    isStopped = true;
    ++jobNumber;
    WakeUp(jobPosted);
    for (const std::unique_ptr<Worker>& worker : threads) {
        try {
            worker->thread.Wait();
        } catch (const std::exception&) {
            // The failing wait has been reported; nobody could do anything about it here.
        }
    }
}

std::uint32_t RowWorkers::CountOfProcessors() {
    return std::min(Quorvex::Platform::GetProcessorCount(), 8u);
}

void RowWorkers::RunJob(const Job& newJob, std::uint32_t workerCount) {
    workerCount = std::min({workerCount, largestCount, newJob.unitCount});
    job = newJob;
    nextUnit = 0;
    if (workerCount < 2)
        return TakeUnits(0);
    StartThreads(workerCount - 1);
    wantedThreads = workerCount - 1;
    attendance = isOpen;
    ++jobNumber;
    WakeUp(jobPosted);
    TakeUnits(0);
    if ((attendance.fetch_and(~isOpen) & ~isOpen) == 0)
        return;
    std::unique_lock lock(sleepMutex);
    everyoneLeft.wait(lock, [this] { return attendance == 0; });
}

void RowWorkers::StartThreads(std::uint32_t count) {
    try {
        threads.reserve(count);
        while (canStartThreads && threads.size() < count) {
            auto worker = std::make_unique<Worker>();
            worker->owner = this;
            worker->number = static_cast<std::uint32_t>(threads.size()) + 1;
            worker->thread.Run(
                [](void* argument) {
                    auto* const started = static_cast<Worker*>(argument);
                    started->owner->WorkUntilStopped(started->number);
                },
                worker.get());
            threads.push_back(std::move(worker));
        }
    } catch (const std::exception&) {
        // A system without threads to give is not asked again; the work goes on with those there are.
        canStartThreads = false;
    }
}

void RowWorkers::WorkUntilStopped(std::uint32_t number) {
    std::uint32_t seen = 0;
    while (!isStopped) {
        const std::uint32_t current = jobNumber;
        if (current == seen) {
            std::unique_lock lock(sleepMutex);
            jobPosted.wait(lock, [this, seen] { return jobNumber != seen; });
            continue;
        }
        seen = current;
        if (!Join(number))
            continue;
        TakeUnits(number);
        Leave();
    }
}

void RowWorkers::Leave() {
    if (--attendance == 0)
        WakeUp(everyoneLeft);
}

// Whoever found the old value under the lock sleeps by now, and whoever comes later finds the new one.
void RowWorkers::WakeUp(std::condition_variable& sleepers) {
    { const std::lock_guard lock(sleepMutex); }
    sleepers.notify_all();
}

bool RowWorkers::Join(std::uint32_t number) {
    std::uint32_t present = attendance;
    do {
        if ((present & isOpen) == 0)
            return false;
    } while (!attendance.compare_exchange_weak(present, present + 1));
    // Only now the job cannot change any more.
    if (number <= wantedThreads)
        return true;
    Leave();
    return false;
}

void RowWorkers::TakeUnits(std::uint32_t number) {
    for (std::uint32_t unit = nextUnit++; unit < job.unitCount; unit = nextUnit++)
        job.work(job.context, number, unit);
}

} // namespace Quorvex::Platform::Video::Software
