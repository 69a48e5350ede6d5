#pragma once

#include <cstddef>

/// While it lives, array allocations of the calling thread are watched, and those of at least failFromBytes raise
/// std::bad_alloc.
class AllocationProbe {
public:
    explicit AllocationProbe(std::size_t failFromBytes = ~std::size_t{0});
    AllocationProbe(const AllocationProbe&) = delete;
    AllocationProbe& operator=(const AllocationProbe&) = delete;
    ~AllocationProbe();

    /// Bytes of the largest array asked for, whether it was given or not.
    std::size_t GetLargest() const;
    std::size_t GetCount() const;
};
