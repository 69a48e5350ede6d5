#include "tests/data/AllocationProbe.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

thread_local bool isWatching = false;
thread_local std::size_t failFrom = 0;
thread_local std::size_t largest = 0;
thread_local std::size_t count = 0;
thread_local std::size_t total = 0;

void* Allocate(std::size_t bytes) {
    if (isWatching) {
        if (bytes >= failFrom)
            throw std::bad_alloc();
        total += bytes;
    }
    if (void* block = std::malloc(bytes != 0 ? bytes : 1))
        return block;
    throw std::bad_alloc();
}

} // namespace

AllocationProbe::AllocationProbe(std::size_t failFromBytes) {
    failFrom = failFromBytes;
    largest = count = total = 0;
    isWatching = true;
}

AllocationProbe::~AllocationProbe() {
    isWatching = false;
}

std::size_t AllocationProbe::GetLargest() const {
    return largest;
}

std::size_t AllocationProbe::GetCount() const {
    return count;
}

std::size_t AllocationProbe::GetTotal() const {
    return total;
}

void* operator new(std::size_t bytes) {
    return Allocate(bytes);
}

void* operator new[](std::size_t bytes) {
    if (isWatching) {
        ++count;
        largest = std::max(largest, bytes);
    }
    return Allocate(bytes);
}

// Under a sanitizer this one would not go through the one above, and its blocks be taken for another's.
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return std::malloc(bytes);
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

void operator delete[](void* block) noexcept {
    std::free(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    std::free(block);
}
