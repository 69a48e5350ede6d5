#include "tests/program/FailingMemory.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

// The test program's own operator new and operator delete, all of them but the aligned ones, which nothing here calls.
// They stand in one file, so that a block is always given back to where it came from.

namespace {

constexpr std::size_t never = std::numeric_limits<std::size_t>::max();

constinit std::atomic<std::size_t> smallestCounted = never;
constinit std::atomic<std::uint32_t> nextPlace = 0;
constinit std::atomic<std::uint32_t> failingPlace = 0;
constinit std::atomic<bool> hasFailed = false;
constinit thread_local bool isSpared = false;

bool IsToFail(std::size_t bytes) {
    if (bytes < smallestCounted || isSpared || nextPlace++ != failingPlace)
        return false;
    hasFailed = true;
    return true;
}

/// Null where there is no memory.
void* Take(std::size_t bytes) noexcept {
    return IsToFail(bytes) ? nullptr : std::malloc(bytes != 0 ? bytes : 1);
}

void* TakeOrRaise(std::size_t bytes) {
    void* const block = Take(bytes);
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

} // namespace

void* operator new(std::size_t bytes) {
    return TakeOrRaise(bytes);
}

void* operator new[](std::size_t bytes) {
    return TakeOrRaise(bytes);
}

void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return Take(bytes);
}

void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept {
    return Take(bytes);
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete[](void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    std::free(block);
}

void operator delete(void* block, const std::nothrow_t&) noexcept {
    std::free(block);
}

void operator delete[](void* block, const std::nothrow_t&) noexcept {
    std::free(block);
}

namespace Quorvex::App::Test {

FailingMemory::FailingMemory(std::size_t minimumBytes, std::uint32_t place) {
    isSpared = true;
    hasFailed = false;
    nextPlace = 0;
    failingPlace = place;
    smallestCounted = minimumBytes;
}

FailingMemory::~FailingMemory() {
    smallestCounted = never;
    isSpared = false;
}

bool FailingMemory::HasFailed() const {
    return hasFailed;
}

} // namespace Quorvex::App::Test
